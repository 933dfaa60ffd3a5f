// Rules\rules.conf: any bytes yield one row per whole record, and every row's path finds a rule of its group or an
// earlier one.
#include <algorithm>

#include "FuzzInput.h"
#include "base/AsciiCase.h"
#include "rules/ApplicationRules.h"
#include "support/FakeClock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    test::FakeClock clock;
    const std::string file = fuzz::Folder().Write(
        R"(\Rules\rules.conf)", fuzz::Enciphered(fuzz::TextOfInput(data, size), sizeof(ApplicationRuleRecord)));
    const auto rows = LoadApplicationRules(file, clock);
    fuzz::Require(rows.size() == size / sizeof(ApplicationRuleRecord));
    for (const ApplicationRow& row : rows) {
        fuzz::Require(row.path.size() <= 259 && row.path.ends_with(row.name));
        const RuleAction action = LookupApplicationAction(file, clock, row.path);
        const ApplicationState state = action == RuleAction::Deny    ? ApplicationState::Deny
                                       : action == RuleAction::Allow ? ApplicationState::Allow
                                                                     : ApplicationState::Ask;
        fuzz::Require(row.path.empty() || std::any_of(rows.begin(), rows.end(), [&](const ApplicationRow& other) {
                          return other.state == state && EqualsIgnoringCase(other.path, row.path);
                      }));
    }
    return 0;
}
