// GIF: whole files behind their signature, and the bare compressed stream, in two pieces.
#include "FuzzImage.h"
#include "image/Decoders.h"
#include "image/LzwDecoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    const auto input = fuzz::BytesOfInput(data, size);
    fuzz::RequireProperImage(DecodeGif(input));
    if (size < 3) return 0;
    std::vector<std::uint8_t> whole(std::size_t{16} * data[0], 0xAA), pieces = whole;
    const int symbolBits = LzwDecoder::kFewestSymbolBits + data[1] % 7;
    const auto stream = input.subspan(3);
    const auto first = stream.first(std::min<std::size_t>(data[2], stream.size()));
    LzwDecoder inOne(symbolBits, whole), inTwo(symbolBits, pieces);
    const bool isGood = inOne.Decode(stream);
    fuzz::Require(isGood == (inTwo.Decode(first) && inTwo.Decode(stream.subspan(first.size()))));
    fuzz::Require(whole == pieces && inOne.IsFull() == inTwo.IsFull());
    return 0;
}
