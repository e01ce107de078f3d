# With RTIFED_UNITY, a compiler reads all source files of a folder as one, so it reads the headers of the standard library once
# for each folder, and compiles a template once that many files use. The whole is built in a quarter of the time, but a change
# compiles all files of the folder again. It also hides a file that relies on what another one includes, and a local name that
# hides another: the preset `files` finds these.

# rtifed_unity(TARGET [LIBRARY] [SIZE N] [ALONE FILE...]): at most N files are compiled together. With RTIFED_UNITY=PROGRAM, each
# file of a LIBRARY is compiled by itself. ALONE are files that have a local name in common with another file of their folder,
# which would be defined twice.
function(rtifed_unity target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "LIBRARY" "SIZE" "ALONE")
    if(NOT arg_SIZE)
        set(arg_SIZE 100)
    endif()
    set(together ON)
    if(NOT RTIFED_UNITY OR (RTIFED_UNITY STREQUAL "PROGRAM" AND arg_LIBRARY))
        set(together OFF)
    endif()
    # Set even if it is off, because a host may have set CMAKE_UNITY_BUILD, which takes files in any order.
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${together} UNITY_BUILD_MODE GROUP)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(source IN_LIST arg_ALONE OR IS_ABSOLUTE "${source}" OR NOT source MATCHES "\\.cc$")
            continue()
        endif()
        set(group main)
        if(source MATCHES "^([^/]+)/")
            set(group ${CMAKE_MATCH_1})
        endif()
        math(EXPR part "${files_${group}} + 0")
        math(EXPR files_${group} "${part} + 1")
        math(EXPR part "${part} / ${arg_SIZE}")
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group}-${part})
    endforeach()
endfunction()
