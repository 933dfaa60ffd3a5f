// Image files of every format, as they come from a skin's folder.
#include "FuzzImage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    fuzz::RequireProperImage(DecodeImage(fuzz::BytesOfInput(data, size)));
    return 0;
}
