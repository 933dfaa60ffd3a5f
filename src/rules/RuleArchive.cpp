#include "rules/RuleArchive.h"

#include <zip.h>

#include <algorithm>

namespace brennvar {
namespace {

constexpr zip_uint64_t kLibraryOwnsNothing = 0;

ArchiveFault FaultOf(const zip_stat_t& facts) {
    constexpr zip_uint64_t kNeeded =
        ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
    if ((facts.valid & kNeeded) != kNeeded) return ArchiveFault::Damaged;
    if (facts.encryption_method != ZIP_EM_NONE) return ArchiveFault::Enciphered;
    if (facts.comp_method != ZIP_CM_STORE && facts.comp_method != ZIP_CM_DEFLATE)
        return ArchiveFault::UnknownMethod;
    if (facts.size > kMostUnpacked) return ArchiveFault::TooLarge;
    if (facts.size > kRatioMatters && facts.comp_size < (facts.size + kMostRatio - 1) / kMostRatio) {
        return ArchiveFault::TooLarge;
    }
    return ArchiveFault::None;
}

}  // namespace

void ArchiveWriter::Discard::operator()(zip* archive) const {
    zip_discard(archive);
}
void ArchiveWriter::Release::operator()(zip_source* source) const {
    zip_source_free(source);
}
void ArchiveReader::Discard::operator()(zip* archive) const {
    zip_discard(archive);
}

ArchiveWriter::ArchiveWriter() : m_bytes(zip_source_buffer_create(nullptr, 0, kLibraryOwnsNothing, nullptr)) {
    if (!m_bytes) return;
    m_archive.reset(zip_open_from_source(m_bytes.get(), ZIP_TRUNCATE, nullptr));
    // The archive lets go of its source when it is closed; the bytes are wanted after that.
    if (m_archive) zip_source_keep(m_bytes.get());
}

ArchiveWriter::~ArchiveWriter() = default;

bool ArchiveWriter::AddFile(const std::string& name, std::string_view content, Packing packing) {
    if (!m_archive) return false;
    zip_source_t* const source =
        zip_source_buffer(m_archive.get(), content.data(), content.size(), kLibraryOwnsNothing);
    if (source == nullptr) return false;
    const zip_int64_t index = zip_file_add(m_archive.get(), name.c_str(), source, ZIP_FL_ENC_GUESS);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    const zip_int32_t method = packing == Packing::Stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
    // Without a level the library packs at zlib's highest, which takes longer and makes rules hardly smaller.
    constexpr zip_uint32_t kUsualLevel = 6;  // zlib's default
    constexpr zip_uint32_t kFastestLevel = 1;
    return zip_set_file_compression(m_archive.get(), static_cast<zip_uint64_t>(index), method,
                                    packing == Packing::Fast ? kFastestLevel : kUsualLevel) == 0;
}

bool ArchiveWriter::SetComment(const std::string& comment) {
    return m_archive && comment.size() <= UINT16_MAX &&
           zip_set_archive_comment(m_archive.get(), comment.data(), static_cast<zip_uint16_t>(comment.size())) == 0;
}

std::optional<std::string> ArchiveWriter::Close() {
    if (!m_archive || zip_get_num_entries(m_archive.get(), 0) < 1) return std::nullopt;
    if (zip_close(m_archive.get()) != 0) return std::nullopt;  // it stays ours to discard
    (void)m_archive.release();
    zip_stat_t facts;
    if (zip_source_stat(m_bytes.get(), &facts) != 0 || (facts.valid & ZIP_STAT_SIZE) == 0 ||
        zip_source_open(m_bytes.get()) != 0) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(facts.size), '\0');
    const zip_int64_t read = zip_source_read(m_bytes.get(), bytes.data(), bytes.size());
    (void)zip_source_close(m_bytes.get());
    if (read != static_cast<zip_int64_t>(bytes.size())) return std::nullopt;
    return bytes;
}

ArchiveReader::ArchiveReader(std::string_view bytes) : m_length(bytes.size()) {
    m_fault = ArchiveFault::NotOpened;
    if (bytes.empty() || bytes.size() > kLongestArchive) return;
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), kLibraryOwnsNothing, nullptr);
    if (source == nullptr) return;
    m_archive.reset(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr));
    if (m_archive) {
        List();
        return;
    }
    zip_source_free(source);
    // An archive with an entry begins with the signature of a header.
    if (bytes.starts_with("PK")) m_fault = ArchiveFault::Damaged;
}

ArchiveReader::~ArchiveReader() = default;

void ArchiveReader::List() {
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    if (count < 0 || static_cast<std::size_t>(count) > kMostEntries) {
        m_fault = ArchiveFault::TooLarge;
        return;
    }
    std::uint64_t packed = 0;
    std::vector<Entry> entries;
    for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
        const char* const name = zip_get_name(m_archive.get(), i, ZIP_FL_ENC_RAW);
        zip_stat_t facts;
        zip_stat_init(&facts);
        if (name == nullptr || zip_stat_index(m_archive.get(), i, 0, &facts) != 0) {
            m_fault = ArchiveFault::Damaged;
            return;
        }
        entries.push_back({.name = name,
                           .size = facts.size,
                           .packed = facts.comp_size,
                           .crc = facts.crc,
                           .fault = FaultOf(facts)});
        // Entries that share their bytes are how a small archive becomes a large folder.
        packed += std::min(facts.comp_size, m_length + 1);
        if (packed > m_length) {
            m_fault = ArchiveFault::Damaged;
            return;
        }
    }
    m_entries = std::move(entries);
    m_fault = ArchiveFault::None;
}

std::string ArchiveReader::Comment() const {
    int length = 0;
    const char* const comment =
        m_archive ? zip_get_archive_comment(m_archive.get(), &length, ZIP_FL_ENC_RAW) : nullptr;
    return comment != nullptr && length > 0 ? std::string(comment, static_cast<std::size_t>(length))
                                            : std::string();
}

std::optional<std::string> ArchiveReader::Extract(std::size_t index) const {
    if (index >= m_entries.size() || m_entries[index].fault != ArchiveFault::None) return std::nullopt;
    struct Closer {
        void operator()(zip_file_t* file) const { (void)zip_fclose(file); }
    };
    const std::unique_ptr<zip_file_t, Closer> file(zip_fopen_index(m_archive.get(), index, 0));
    if (!file) return std::nullopt;
    std::string content(static_cast<std::size_t>(m_entries[index].size), '\0');
    for (std::size_t at = 0; at < content.size();) {
        const zip_int64_t read = zip_fread(file.get(), content.data() + at, content.size() - at);
        if (read <= 0) return std::nullopt;
        at += static_cast<std::size_t>(read);
    }
    // The library compares size and checksum where the content ends: there must be nothing more, and no complaint.
    char more = 0;
    if (zip_fread(file.get(), &more, 1) != 0) return std::nullopt;
    return content;
}

}  // namespace brennvar
