#include "base/Users_win.h"

#include "base/Windows_win.h"

// windows.h must stand before lm.h.
#include <lm.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/AsciiCase.h"
#include "base/Handles_win.h"

namespace brennvar {
namespace {

// Windows' own limits with room to spare (UNLEN 256, DNLEN 15, names of domains 255).
constexpr DWORD kLongestName = 512;

// Empty: it cannot be said in the system's code page, and no rule could name it.
std::string Narrow(const wchar_t* text) {
    std::array<char, kLongestName> narrow{};
    BOOL isLost = FALSE;
    const int length = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text, -1, narrow.data(),
                                             static_cast<int>(narrow.size()), nullptr, &isLost);
    return length > 0 && !isLost ? narrow.data() : "";
}

void AddAccount(std::vector<std::string>& users, PSID account) {
    std::array<wchar_t, kLongestName> name{};
    std::array<wchar_t, kLongestName> domain{};
    DWORD nameSize = kLongestName;
    DWORD domainSize = kLongestName;
    SID_NAME_USE use{};
    if (!::LookupAccountSidW(nullptr, account, name.data(), &nameSize, domain.data(), &domainSize, &use)) return;
    const std::string narrowDomain = Narrow(domain.data());
    const std::string narrowName = Narrow(name.data());
    if (!narrowDomain.empty() && !narrowName.empty()) users.push_back(narrowDomain + '\\' + narrowName);
}

void AddOwnUser(std::vector<std::string>& users) {
    UniqueToken token;
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened)) return;
    token = UniqueToken(opened);
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> info{};
    DWORD size = 0;
    if (!::GetTokenInformation(token.Get(), TokenUser, info.data(), static_cast<DWORD>(info.size()), &size)) return;
    AddAccount(users, reinterpret_cast<const TOKEN_USER*>(info.data())->User.Sid);
}

void AddServiceAccounts(std::vector<std::string>& users) {
    for (const WELL_KNOWN_SID_TYPE type : {WinLocalSystemSid, WinLocalServiceSid, WinNetworkServiceSid}) {
        alignas(SID) std::array<std::byte, SECURITY_MAX_SID_SIZE> account{};
        auto size = static_cast<DWORD>(account.size());
        if (::CreateWellKnownSid(type, nullptr, account.data(), &size)) AddAccount(users, account.data());
    }
}

void AddAccountsOfMachine(std::vector<std::string>& users) {
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> machine{};
    auto machineSize = static_cast<DWORD>(machine.size());
    if (!::GetComputerNameA(machine.data(), &machineSize)) return;
    DWORD resume = 0;
    NET_API_STATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        LPBYTE buffer = nullptr;
        DWORD count = 0;
        DWORD total = 0;
        status = ::NetUserEnum(nullptr, 0, FILTER_NORMAL_ACCOUNT, &buffer, MAX_PREFERRED_LENGTH, &count, &total,
                               &resume);
        if (!buffer) return;
        const auto* accounts = reinterpret_cast<const USER_INFO_0*>(buffer);
        for (DWORD i = 0; i < count; ++i) {
            const std::string name = Narrow(accounts[i].usri0_name);
            if (!name.empty()) users.push_back(std::string(machine.data()) + '\\' + name);
        }
        ::NetApiBufferFree(buffer);
        if (count == 0) return;
    }
}

}  // namespace

std::vector<std::string> ListUsers() {
    std::vector<std::string> users;
    AddOwnUser(users);
    AddAccountsOfMachine(users);
    AddServiceAccounts(users);
    std::sort(users.begin(), users.end(), [](const auto& a, const auto& b) { return LowerCase(a) < LowerCase(b); });
    users.erase(std::unique(users.begin(), users.end(),
                            [](const auto& a, const auto& b) { return EqualsIgnoringCase(a, b); }),
                users.end());
    return users;
}

}  // namespace brennvar
