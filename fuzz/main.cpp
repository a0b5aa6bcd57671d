// Runs the files of a corpus through a fuzz target, where the fuzzer does not. Prints the name of
// each file before its turn, so that the last name is that of the input which ends the run.

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

int main(int argc, char* argv[]) {
    CHECK(argc > 1);
    for (int i = 1; i < argc; ++i) {
        std::fprintf(stderr, "%s\n", argv[i]);
        const std::string input = getFile(argv[i]);
        const auto* const data = reinterpret_cast<const unsigned char*>(input.data());
        LLVMFuzzerTestOneInput(data, input.size());
    }
}
