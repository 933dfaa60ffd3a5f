// The dialog of details: a logged packet with its bytes, a logged event, a connection.
#include <array>

#include "NoTools.h"
#include "OpeningPage.h"
#include "config/Resources_win.h"
#include "dialogs/DetailsDialog_win.h"
#include "logs/LogDetails.h"
#include "ui/ToolkitIds.h"

namespace brennvar::gallery {
namespace {

// Asks to open a connection from 192.168.1.10:49152 to 93.184.216.34:443; the checksum of TCP is wrong by one.
constexpr std::array<unsigned char, 60> kSyn = {
    0x45, 0x00, 0x00, 0x3c, 0x1c, 0x46, 0x40, 0x00, 0x40, 0x06, 0x26, 0xe9, 0xc0, 0xa8, 0x01,
    0x0a, 0x5d, 0xb8, 0xd8, 0x22, 0xc0, 0x00, 0x01, 0xbb, 0x11, 0x22, 0x33, 0x44, 0x00, 0x00,
    0x00, 0x00, 0xa0, 0x02, 0xfa, 0xf0, 0x4b, 0x79, 0x00, 0x00, 0x02, 0x04, 0x05, 0xb4, 0x04,
    0x02, 0x08, 0x0a, 0x00, 0x00, 0x03, 0xe8, 0x00, 0x00, 0x00, 0x00, 0x01, 0x03, 0x03, 0x07};

constexpr char kPath[] = R"(c:\program files\Northwind\Mail and Calendar\bin\mail-and-calendar-helper.exe)";

template <class Record>
Record RecordOfSyn() {
    Record record{};
    record.hour = 12;
    record.minute = 4;
    record.second = 5;
    record.protocol = 6;
    record.outgoing = 1;
    record.localAddress = 0x0A01A8C0;
    record.localPort = 49152;
    record.remoteAddress = 0x22D8B85D;
    record.remotePort = 443;
    PutText(record.path, kPath);
    return record;
}

LogNames Names() {
    return {.localName = {},
            .remoteName = "www.example.com",
            .localHardware = "00-1b-ac-3d-4e-ff",
            .remoteHardware = "00-50-56-c0-00-08"};
}

DetailsSheet PacketSheet(const Language& language) {
    auto header = RecordOfSyn<PacketLogHeader>();
    header.packetSize = static_cast<std::uint32_t>(kSyn.size());
    return DescribePacket(header, std::as_bytes(std::span(kSyn)), Names(), language);
}

// Of a whole Ethernet packet, so that the bytes scroll as well.
DetailsSheet LargePacketSheet(const Language& language) {
    auto header = RecordOfSyn<PacketLogHeader>();
    std::vector<unsigned char> bytes(kSyn.begin(), kSyn.end());
    while (bytes.size() < 1500) bytes.push_back(static_cast<unsigned char>(bytes.size() * 7));
    bytes[2] = 0x05;
    bytes[3] = 0xdc;
    header.packetSize = 1500;
    return DescribePacket(header, std::as_bytes(std::span(bytes)), Names(), language);
}

DetailsSheet EventSheet(const Language& language) {
    auto record = RecordOfSyn<TrafficLogRecord>();
    record.action = 2;
    record.kind = 1;
    PutText(record.shortText, "No mail by night");
    PutText(record.text1, "first text");
    return DescribeLogRecord(record, Names(), language);
}

// As the Connections page tells of a row.
DetailsSheet ConnectionSheet(const Language& language) {
    const std::string unknown = language.GetText(1114, "unknown");
    DetailsGroup group{{},
                       {{language.GetText(12, "Local/Remote IP:"), "192.168.1.10:49152 -> 93.184.216.34:443"},
                        {language.GetText(13, "Local/Remote domain:"), unknown + " -> www.example.com"},
                        {language.GetText(14, "Local/Remote MAC:"), "00-1b-ac-3d-4e-ff -> 00-50-56-c0-00-08"},
                        {language.GetText(536, "Bytes In/Out:"), "1,234,567 / 89,012"},
                        {language.GetText(535, "Status:"), "ESTAB-OUT"},
                        {language.GetText(24, "Process:"), kPath}}};
    return {.title = language.GetText(531, "Connection details"),
            .address = 0x22D8B85D,
            .groups = {std::move(group)},
            .bytesHeading = {},
            .bytes = {}};
}

// Turns the wheel over both parts when the dialog that opens next over the window is there.
void ScrollLater(HWND window) {
    ::SetTimer(window, 1, USER_TIMER_MINIMUM, [](HWND owner, UINT, UINT_PTR id, DWORD) {
        ::KillTimer(owner, id);
        const HWND dialog = ::GetLastActivePopup(owner);
        const auto turn = [dialog](int part, int notches) {
            const auto delta = static_cast<WORD>(-notches * WHEEL_DELTA);
            ::SendMessageA(::GetDlgItem(dialog, part), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
        };
        turn(IDC_DETAILS_PANEL, 100);
        turn(IDC_DETAILS_BYTES, 10);
    });
}

std::unique_ptr<GalleryPage> MakePage(DetailsSheet (*makeSheet)(const Language&), bool isScrolled = false) {
    return std::make_unique<OpeningPage>([makeSheet, isScrolled](HWND window, const Look& look) {
        const Language language = OpenLanguage();
        if (isScrolled) ScrollLater(window);
        NoTools tools;
        DetailsDialog(look.fonts, language, tools, makeSheet(language)).Show(window);
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakePacketDetailsGallery() {
    return MakePage(&PacketSheet);
}
std::unique_ptr<GalleryPage> MakeLargePacketDetailsGallery() {
    return MakePage(&LargePacketSheet, true);
}
std::unique_ptr<GalleryPage> MakeLogDetailsGallery() {
    return MakePage(&EventSheet);
}
std::unique_ptr<GalleryPage> MakeConnectionDetailsGallery() {
    return MakePage(&ConnectionSheet);
}

}  // namespace brennvar::gallery
