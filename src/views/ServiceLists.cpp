// What sets the two lists apart: their words, their limits and how the service is told.
#include <algorithm>
#include <utility>

#include "commands/Batch.h"
#include "rules/SiteList.h"
#include "rules/TrustedPrograms.h"
#include "views/ServiceList.h"

namespace brennvar {

// Trusted programs

Text TrustedList::Title() const {
    return Text{1422, "Program"};
}
std::size_t TrustedList::LongestText() const {
    return kLongestTrustedPath;
}
Text TrustedList::NothingListed() const {
    return Text{2113, "No program is trusted. Add one here, or tick the box when the firewall asks about it."};
}
Text TrustedList::TooLong() const {
    return Text{2114,
                "The path of this program is longer than the 119 characters that the firewall service takes. Move "
                "the program to a folder with a shorter path and add it from there."};
}
Text TrustedList::Listed() const {
    return Text{2115, "This program is trusted already."};
}
std::chrono::milliseconds TrustedList::WritingTime() const {
    // More than after other commands: the service takes its time over this one.
    return std::chrono::milliseconds(1000);
}
void TrustedList::SendAdded(const std::string& text, Sending sending) {
    Sender().SendProtected(Batch(UserCommand::AddTrusted, {.path = text, .detail = text}),
                           {.allowed = std::move(sending.allowed),
                            .refused = std::move(sending.refused),
                            .sent = std::move(sending.sent),
                            .withdrawn = std::move(sending.withdrawn)});
}

// Filtered sites

Text FilteredSites::Title() const {
    return Text{2116, "Site"};
}
std::size_t FilteredSites::LongestText() const {
    return kLongestSite;
}
Text FilteredSites::NothingListed() const {
    return Text{2117, "No site is filtered."};
}
Text FilteredSites::TooLong() const {
    return Text{2118, "A name has at most 103 characters."};
}
Text FilteredSites::Listed() const {
    return Text{2119, "This name is in the list already."};
}
Text FilteredSites::FurtherProblem(std::string_view text) const {
    const auto isBlank = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte <= ' ' || byte == 0x7F;
    };
    return std::any_of(text.begin(), text.end(), isBlank) ? Text{2120, "A name has no blanks."} : Text{};
}
std::chrono::milliseconds FilteredSites::WritingTime() const {
    return kWritingPause;
}
void FilteredSites::SendAdded(const std::string& text, Sending sending) {
    sending.allowed();  // no password stands before it
    Sender().AddSite(text, std::move(sending.sent), std::move(sending.withdrawn));
}
void FilteredSites::SendRemoved(std::vector<std::uint32_t> ids, Sending sending) {
    sending.allowed();
    Sender().RemoveSites(std::move(ids), std::move(sending.sent), std::move(sending.withdrawn));
}

}  // namespace brennvar
