// Replaces the fuzzer in the tests: runs a target on the files given as arguments.

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int main(int argc, char *argv[]) {
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "cannot read %s\n", argv[i]);
            return 1;
        }
        const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
        std::fprintf(stderr, "%s\n", argv[i]);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    }
    return argc > 1 ? 0 : 1;
}
