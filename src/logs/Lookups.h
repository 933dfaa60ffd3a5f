// What the service's files know about an address or a program. They are opened for reading only, never waited for
// and never created; a missing file yields nothing. Of each file it is remembered which record answers for what
// (RecordIndex): a question reads one record and what has been appended. Any thread; questions about files of one
// kind wait for one another, so none is to be asked on the user-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/Ipv4.h"
#include "base/StopSignal.h"
#include "logs/LogRecords.h"
#include "logs/RecordIndex.h"

namespace brennvar {

struct HostNameTraits {
    using Record = DnsLogRecord;
    using Key = Ipv4;
    static constexpr bool kTakesLast = true;  // the latest name counts
    static std::uint64_t HashOf(const Record& record) { return record.address; }
    static std::uint64_t HashOf(Ipv4 address) { return address; }
    static bool Matches(const Record& record, Ipv4 address) { return record.address == address; }
};

struct HardwareAddressTraits {
    using Record = MacLogRecord;
    using Key = Ipv4;
    static constexpr bool kTakesLast = false;
    static std::uint64_t HashOf(const Record& record) { return record.address; }
    static std::uint64_t HashOf(Ipv4 address) { return address; }
    static bool Matches(const Record& record, Ipv4 address) { return record.address == address; }
};

struct AdviceTraits {
    using Record = AdviceRecord;
    using Key = std::string_view;
    static constexpr bool kTakesLast = false;
    static std::uint64_t HashOf(const Record& record);
    static std::uint64_t HashOf(std::string_view path);
    static bool Matches(const Record& record, std::string_view path);
};

class LogLookups {
public:
    // The signal is borrowed, and ends a reading that is under way.
    LogLookups(std::string dataFolder, const StopSignal& stop);
    LogLookups(const LogLookups&) = delete;
    LogLookups& operator=(const LogLookups&) = delete;

    // The domain name that this address was resolved from last on the given day; empty when there is none. Of files
    // that are larger than RecordIndex looks at, the end counts.
    [[nodiscard]] std::string HostName(LocalDate day, Ipv4 address);
    // "0a-1b-2c-3d-4e-5f", as first seen for this address on the given day; empty when there is none.
    [[nodiscard]] std::string HardwareAddress(LocalDate day, Ipv4 address);
    // 0: deny, 1: allow; any other number advises nothing. The first entry for the path counts; compared without
    // regard to the case of ASCII letters.
    [[nodiscard]] std::optional<std::uint32_t> Advice(std::string_view path);

private:
    // The files of one kind that were asked about last: today's, and that of a day whose log is looked at.
    template <class Traits>
    class Files {
    public:
        explicit Files(const StopSignal& stop) : m_stop(stop) {}
        [[nodiscard]] auto Find(const std::string& path, const typename Traits::Key& key) {
            const std::lock_guard lock(m_mutex);
            return FileAt(path).Find(key);
        }

    private:
        static constexpr std::size_t kMost = 2;
        [[nodiscard]] RecordIndex<Traits>& FileAt(const std::string& path);

        const StopSignal& m_stop;
        std::mutex m_mutex;
        std::vector<std::unique_ptr<RecordIndex<Traits>>> m_files;  // the one that was asked about last is last
    };

    const std::string m_dataFolder;
    Files<HostNameTraits> m_names;
    Files<HardwareAddressTraits> m_hardware;
    Files<AdviceTraits> m_advice;
};

}  // namespace brennvar
