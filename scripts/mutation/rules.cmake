# How scripts/mutate builds: each program becomes a library that keeps all its functions replaceable, and a start that loads
# libmutant.so before it. Functions of that library, which is empty until a mutant takes its place, are then used instead.
# -Dalways_inline=unused: a function that is inlined cannot be replaced.

set(objects "<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -O0 -fPIC -w")
string(APPEND objects " -fvisibility=default -fno-visibility-inlines-hidden")
string(APPEND objects " -fsemantic-interposition -Dalways_inline=unused -include-pch ${CMAKE_BINARY_DIR}/system.pch")
set(CMAKE_CXX_COMPILE_OBJECT "${objects} -o <OBJECT> -c <SOURCE>")

set(link "<CMAKE_CXX_COMPILER> -fuse-ld=lld -fprofile-instr-generate -o <TARGET>")
set(CMAKE_CXX_LINK_EXECUTABLE
    "${link}.so -shared -Wl,-u,main,-soname,${CMAKE_BINARY_DIR}/<TARGET>.so <OBJECTS> <LINK_LIBRARIES>"
    "${link} -Wl,--no-as-needed,--enable-new-dtags,-rpath,${CMAKE_BINARY_DIR} -L${CMAKE_BINARY_DIR} -lreached -lmutant <TARGET>.so")
