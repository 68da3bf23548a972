#include "fuzz/entries.h"

/// Called by libFuzzer for each input; FUZZ_ENTRY names one of the functions of entries.h.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    fuzz::FUZZ_ENTRY(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
