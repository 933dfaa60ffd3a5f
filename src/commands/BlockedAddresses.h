// The addresses that this program has had blocked for a time, as long as it runs. The service blocks others by
// itself, and tells nobody. User-interface thread only.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/Clock.h"
#include "base/Ipv4.h"

namespace brennvar {

class BlockedAddresses {
public:
    // For so many seconds from now.
    void Add(Ipv4 address, FileTime now, std::uint32_t seconds) {
        std::erase_if(m_entries, [&](const Entry& entry) { return entry.end <= now || entry.address == address; });
        m_entries.push_back({.address = address, .end = now + seconds * kFileTimePerSecond});
    }
    [[nodiscard]] std::vector<Ipv4> InForce(FileTime now) const {
        std::vector<Ipv4> addresses;
        for (const Entry& entry : m_entries) {
            if (entry.end > now) addresses.push_back(entry.address);
        }
        return addresses;
    }

private:
    struct Entry {
        Ipv4 address = 0;
        FileTime end = 0;
    };
    std::vector<Entry> m_entries;  // one for each address
};

}  // namespace brennvar
