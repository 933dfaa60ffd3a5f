// A list of the service that a test changes by hand.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "views/ServiceList.h"

namespace brennvar::test {

struct FakeList {
    std::optional<std::vector<ListEntry>> entries{std::in_place};  // nothing: it cannot be read
    FileStamp stamp{.written = 1, .size = 1};

    // Borrows this.
    [[nodiscard]] std::shared_ptr<const ListSource> Source() const { return std::make_shared<Of>(*this); }

private:
    class Of final : public ListSource {
    public:
        explicit Of(const FakeList& list) : m_list(list) {}
        [[nodiscard]] std::optional<std::vector<ListEntry>> Read() const override { return m_list.entries; }
        [[nodiscard]] FileStamp Stamp() const override { return m_list.stamp; }

    private:
        const FakeList& m_list;
    };
};

}  // namespace brennvar::test
