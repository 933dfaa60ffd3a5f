// ICO: the directory, the choice of an image and its two masks.
#include "FuzzImage.h"
#include "image/Decoders.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    fuzz::RequireProperImage(DecodeIco(fuzz::BytesOfInput(data, size)));
    return 0;
}
