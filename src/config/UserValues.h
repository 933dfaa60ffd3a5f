// The few numbers that the interface keeps for the current user, as a seam.
#pragma once

#include <cstdint>
#include <string>

namespace brennvar {

inline constexpr char kUserValueServerPid[] = "ServerPID";  // process id of the service, 0: none
inline constexpr char kUserValueGuiPid[] = "GUIPID";        // process id of the interface
inline constexpr char kUserValueFirstRun[] = "FirstRunBV";  // non-zero: the welcome has been shown
inline constexpr char kUserValueFilteringProxyPort[] = "FilteringProxyPort";  // the same number as its option
// Browser filtering: absent or 0 is off, any other value on.
inline constexpr char kUserValueSiteControl[] = "EnableSCS";
inline constexpr char kUserValueAdBlocking[] = "EnableAdBlocking";
inline constexpr char kUserValueActiveXBlocking[] = "EnableActiveXBlocking";
inline constexpr char kUserValueReferrerBlocking[] = "EnableReferBlocking";
inline constexpr char kUserValueCookiesBlocking[] = "EnableCookiesBlocking";

class UserValues {
public:
    virtual ~UserValues() = default;
    // False, with value as it was, when there is no such number.
    [[nodiscard]] virtual bool ReadUserValue(const std::string& name, std::uint32_t& value) const = 0;
    // False when it could not be written.
    virtual bool WriteUserValue(const std::string& name, std::uint32_t value) = 0;
};

}  // namespace brennvar
