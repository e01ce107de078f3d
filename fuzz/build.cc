// A sequence of calls, eight bytes each, made on a database and on a plain model of it, which must answer alike.

#include "fuzz/Fuzz.hh"
#include "tests/model/Calls.hh"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    _rtiErrorStream.disable();
    std::vector<Call> calls(std::min<std::size_t>(size / sizeof(Call), 64));
    for (std::size_t i = 0; i < calls.size(); ++i)
        std::copy_n(data + i * sizeof(Call), sizeof(Call), calls[i].begin());
    const std::string fault = faultOfCalls(calls);
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    FUZZ_CHECK(fault.empty());
    return 0;
}
