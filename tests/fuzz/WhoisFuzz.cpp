// Whatever a registry answers becomes lines that hold every letter of it, and nothing that could do harm in a list.
// Input: what the first server sends; where it names the European registry, the other one sends it as well.
#include <algorithm>

#include "FuzzInput.h"
#include "support/FakeTransport.h"
#include "tools/Whois.h"

namespace {

bool IsLetter(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code > ' ' && code != 0x7F;
}
std::string Letters(std::string text) {
    std::erase_if(text, [](char c) { return !IsLetter(c); });
    return text;
}

class Lines final : public brennvar::ToolOutput {
public:
    void Print(const std::string& line) override {
        brennvar::fuzz::Require(!line.empty() && line.size() <= brennvar::kMostLine);
        brennvar::fuzz::Require(std::ranges::all_of(line, [](char c) { return c == ' ' || IsLetter(c); }));
        m_letters += Letters(line);
    }
    void Clear() override { m_letters.clear(); }
    [[nodiscard]] const std::string& AllLetters() const { return m_letters; }

private:
    std::string m_letters;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    using fuzz::Require;
    const std::string answer = fuzz::TextOfInput(data, size);
    test::FakeClock clock;
    test::FakePeer peer(clock);
    for (const char* const query : {"+ 192.0.2.9\r\n", "192.0.2.9\r\n"}) {
        peer.script.push_back({.until = query, .pieces = {}, .closes = true});
        if (!answer.empty()) peer.script.back().pieces.push_back({.bytes = answer});
    }
    peer.names = {{"whois.arin.net", "192.0.2.1"}, {"whois.ripe.net", "192.0.2.2"}};
    CWSocket socket(peer.Transport(), clock);
    Lines lines;
    Whois(socket, {}).LookUp("192.0.2.9", Language(nullptr), lines);
    Require(lines.AllLetters() == Letters(answer));
    const bool isReferred = answer.find("RIPE Network Coordination Centre") != std::string::npos;
    Require(peer.connections.size() == (isReferred ? 2U : 1U));
    return 0;
}
