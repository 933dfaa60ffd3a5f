// The text of a message: pieces of text as they stand, and files whose bytes become base64 as they are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "mail/MailSource.h"
#include "mail/TransferEncoding.h"

namespace brennvar {

class MailText final : public MailSource {
public:
    // Of a file at a time; a few pieces of the message.
    static constexpr std::size_t kFilePiece = 1024 * kBytesOfBase64Line;

    // Ends in whole lines. Dots at the beginning of lines are doubled.
    void AddText(std::string_view text);
    // False when the file cannot be opened. It is held open, and read only when its turn comes.
    [[nodiscard]] bool AddFile(const std::string& path);

    [[nodiscard]] std::uint64_t Size() const override { return m_size; }
    [[nodiscard]] std::optional<std::string_view> Next() override;

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }
    };
    struct OpenedFile {
        std::unique_ptr<std::FILE, CloseFile> file;
        std::uint64_t size = 0;  // when it was opened, and what goes over the line
        std::uint64_t read = 0;
    };
    [[nodiscard]] std::optional<std::string_view> NextOf(OpenedFile& file);

    std::vector<std::variant<std::string, OpenedFile>> m_parts;
    std::uint64_t m_size = 0;
    std::size_t m_next = 0;  // of m_parts
    std::string m_bytes;     // of a file
    std::string m_lines;     // made of them
};

}  // namespace brennvar
