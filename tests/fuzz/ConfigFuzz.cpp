// config.conf: any bytes yield a value and a text that fit, or the defaults.
#include "FuzzInput.h"
#include "config/OptionTable.h"
#include "config/Options.h"
#include "support/FakeClock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    const test::DataFolder& folder = fuzz::Folder();
    static test::FakeClock clock;
    const OptionReader options(folder.Path(), clock);
    folder.Write(R"(\config.conf)", fuzz::Enciphered(fuzz::TextOfInput(data, size), sizeof(OptionRecord)));
    constexpr std::uint32_t kFallback = 0x5A5A5A5A;
    for (const OptionId id : {OptionId::ProtectionMode, OptionId::MailServer, OptionId::ProxyPort}) {
        const auto number = static_cast<std::uint32_t>(id);
        const std::uint32_t value = options.ReadOption(number, kFallback);
        const std::string text = options.ReadOptionText(number);
        fuzz::Require(text.size() <= 119 && text.find('\0') == std::string::npos);
        if (size < sizeof(OptionRecord)) fuzz::Require(value == kFallback && text.empty());
    }
    fuzz::Require(clock.sleeps.empty());
    return 0;
}
