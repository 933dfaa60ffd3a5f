// trusted.conf and domain.conf: any bytes yield at most one entry per whole record, in the order of the file, none
// of them empty or longer than its field, and every trusted path that is listed is trusted.
#include "FuzzInput.h"
#include "rules/ListRecords.h"
#include "rules/SiteList.h"
#include "rules/TrustedPrograms.h"
#include "support/FakeClock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    test::FakeClock clock;
    const std::string bytes = fuzz::TextOfInput(data, size);
    const std::string trustedFile =
        fuzz::Folder().Write("trusted.conf", fuzz::Enciphered(bytes, sizeof(TrustedRecord)));
    const auto trusted = LoadTrustedPrograms(trustedFile, clock);
    fuzz::Require(trusted && trusted->size() <= size / sizeof(TrustedRecord));
    for (const std::string& path : *trusted) {
        fuzz::Require(!path.empty() && path.size() < sizeof(TrustedRecord::longPath));
        fuzz::Require(path.find('\0') == path.npos && IsTrustedProgram(trustedFile, path));
    }

    const auto sites =
        LoadSites(fuzz::Folder().Write("domain.conf", fuzz::Enciphered(bytes, sizeof(SiteRecord))), clock);
    fuzz::Require(sites && sites->size() <= size / sizeof(SiteRecord));
    std::size_t record = 0;
    for (const Site& site : *sites) {
        fuzz::Require(!site.name.empty() && site.name.size() <= kLongestSite);
        // The record that it was read from, or one with the same bytes at the same place, is not behind the next
        // one.
        while (bytes.compare(record * sizeof(SiteRecord) + offsetof(SiteRecord, name), site.name.size(),
                             site.name) != 0) {
            ++record;
            fuzz::Require(record < size / sizeof(SiteRecord));
        }
    }
    return 0;
}
