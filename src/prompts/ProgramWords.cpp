#include "prompts/ProgramWords.h"

#include "base/DisplayName.h"
#include "prompts/ProgramPlace.h"

namespace brennvar {
namespace {

// Characters of a company that are worth a tip. A resource may hold 32,000 of them.
constexpr std::size_t kLongestCompany = 200;

std::string WarningOf(ProgramPlace place, const Language& language) {
    switch (place) {
        case ProgramPlace::Temporary: return language.GetText(2432, "runs from a temporary folder");
        case ProgramPlace::UserData: return language.GetText(2433, "runs from a user's data folder (AppData)");
        case ProgramPlace::Usual: break;
    }
    return {};
}

}  // namespace

ProgramWords DescribeProgram(const std::string& path, const std::optional<std::string>& company,
                             const Language& language) {
    ProgramWords words;
    words.file = path;
    words.placeWarning = WarningOf(PlaceOfProgram(path), language);
    words.publisherLabel = language.GetText(2430, "Publisher:");
    if (!company) {
        words.publisher = language.GetText(1114, "unknown");
        return words;
    }
    words.publisher = ShownText(*company);
    // A blank that breaks no line, and a hyphen that is not shown, are nothing to be seen either.
    words.isPublisherMissing = words.publisher.find_first_not_of(
                                   " \xA0"
                                   "\xAD") == std::string::npos;
    if (words.isPublisherMissing) {
        words.publisher = language.GetText(2431, "no publisher given");
        return words;
    }
    if (words.publisher.size() > kLongestCompany)
        words.publisher = words.publisher.substr(0, kLongestCompany) + "...";
    words.publisherNote = language.GetText(2435, "The program says this of itself. Nobody has checked it.");
    return words;
}

}  // namespace brennvar
