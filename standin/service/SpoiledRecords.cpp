#include "service/SpoiledRecords.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace brennvar::standin {
namespace {

constexpr std::byte kOnes{0xFF};

template <std::size_t Size>
void FillField(char (&field)[Size]) {
    std::fill(std::begin(field), std::end(field), 'x');
}

template <RecordType Record>
void MakeNoise(Record& record) {
    std::ranges::fill(WritableRecordBytes(record), kOnes);
}

}  // namespace

void SpoilRecords(std::vector<AdvancedRuleRecord>& records, Spoiling how) {
    if (records.size() < 2) return;
    AdvancedRuleRecord& first = records.front();
    if (how == Spoiling::SameIds) records[1].id = first.id;
    if (how == Spoiling::NoIds) first.id = 0;
    if (how == Spoiling::Noise) MakeNoise(first);
    if (how != Spoiling::Unterminated) return;
    FillField(first.program);
    FillField(first.user);
    FillField(first.description);
}

void SpoilRecords(std::vector<TrustedRecord>& records, Spoiling how) {
    if (records.size() < 2) return;
    TrustedRecord& first = records.front();
    if (how == Spoiling::SameIds) records[1] = first;
    if (how == Spoiling::NoIds) first = {};
    if (how == Spoiling::Noise) MakeNoise(first);
    if (how != Spoiling::Unterminated) return;
    FillField(first.longPath);
    FillField(first.shortPath);
}

void SpoilRecords(std::vector<SiteRecord>& records, Spoiling how) {
    if (records.size() < 2) return;
    SiteRecord& first = records.front();
    if (how == Spoiling::SameIds) records[1].id = first.id;
    if (how == Spoiling::NoIds) first.id = 0;
    if (how == Spoiling::Noise) MakeNoise(first);
    if (how == Spoiling::Unterminated) FillField(first.name);
}

void SpoilEnd(std::vector<std::byte>& content, std::size_t recordSize, Spoiling how) {
    constexpr std::size_t kTail = 5;  // bytes
    if (how == Spoiling::Cut && content.size() >= recordSize) content.resize(content.size() - recordSize / 2);
    if (how == Spoiling::Tail) content.insert(content.end(), kTail, kOnes);
}

}  // namespace brennvar::standin
