#include "views/ConnectionSheet.h"

#include "base/DisplayName.h"
#include "config/Amounts.h"
#include "views/ConnectionTexts.h"

namespace brennvar {
namespace {

constexpr char kPending[] = "...";

// What stands in a line for one end of a listener, or for both ends of a connection.
class Ends {
public:
    Ends(bool isListener, std::string unknown) : m_isListener(isListener), m_unknown(std::move(unknown)) {}

    [[nodiscard]] std::string Of(const std::string& local, const std::string& remote) const {
        return m_isListener ? Known(local) : Known(local) + " -> " + Known(remote);
    }

private:
    [[nodiscard]] std::string Known(const std::string& text) const {
        return text.empty() ? m_unknown : OneLine(text);
    }

    const bool m_isListener;
    const std::string m_unknown;
};

DetailsGroup WhatIsMore(const Language& language, const ConnectionTarget& target, const Ends& ends) {
    const ConnectionRow& row = target.row;
    const AmountWords words(language);
    DetailsGroup more;
    const auto add = [&more](std::string label, std::string value) {
        more.lines.push_back({.label = std::move(label), .value = std::move(value)});
    };
    add(language.GetText(1684, "Ports:"), ends.Of(std::to_string(row.localPort), std::to_string(row.remotePort)));
    add(language.GetText(1685, "Age:"), FormatAge(target.age, row.isOlder));
    if (!row.IsListener()) {
        add(language.GetText(1686, "Rate in/out:"),
            FormatRate(row.rateIn, 1000, words) + " / " + FormatRate(row.rateOut, 1000, words));
    }
    add(language.GetText(1681, "Program:"), target.program.name);
    add(language.GetText(1687, "Process ID:"), std::to_string(row.processId));
    return more;
}

}  // namespace

DetailsSheet ConnectionDetails(const Language& language, const ConnectionTarget& target, const LogNames* names) {
    const ConnectionRow& row = target.row;
    const bool isListener = row.IsListener();
    const Ends ends(isListener, names ? language.GetText(1114, "unknown") : kPending);
    const LogNames found = names ? *names : LogNames{};
    DetailsGroup laidDown;
    const auto add = [&laidDown](std::string label, std::string value) {
        laidDown.lines.push_back({.label = std::move(label), .value = std::move(value)});
    };
    add(isListener ? language.GetText(532, "Local IP:") : language.GetText(12, "Local/Remote IP:"),
        ends.Of(FormatIpv4(row.localAddress), FormatIpv4(row.remoteAddress)));
    add(isListener ? language.GetText(533, "Local domain:") : language.GetText(13, "Local/Remote domain:"),
        ends.Of(found.localName, found.remoteName));
    add(isListener ? language.GetText(534, "Local MAC:") : language.GetText(14, "Local/Remote MAC:"),
        ends.Of(found.localHardware, found.remoteHardware));
    add(language.GetText(536, "Bytes In/Out:"), FormatCount(row.bytesIn) + " / " + FormatCount(row.bytesOut));
    add(language.GetText(535, "Status:"), std::string(ConnectionStateDetailsText(row.state)));
    add(language.GetText(24, "Process:"),
        target.program.path.empty() ? target.program.name : OneLine(target.program.path));
    return {.title = language.GetText(531, "Connection details"),
            .address = isListener ? 0 : row.remoteAddress,
            .groups = {std::move(laidDown), WhatIsMore(language, target, ends)},
            .bytesHeading = {},
            .bytes = {}};
}

}  // namespace brennvar
