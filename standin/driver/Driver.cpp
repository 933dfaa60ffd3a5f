// The driver stand-in: three devices that answer the interface's four requests from what the service stand-in has
// fed. It filters nothing. It is made for Wine, where a driver runs in a process of its own ("winedevice.exe"):
// the addresses in a question request belong to another process, and are written to with NtWriteVirtualMemory.
//
// Freestanding C++: no run-time library, no exceptions, no constructors of globals.
// wdm.h defines two functions of intrin.h again, which C++ refuses: they get other names.
#include <intrin.h>
#define InterlockedBitTestAndSet WdmInterlockedBitTestAndSet
#define InterlockedBitTestAndReset WdmInterlockedBitTestAndReset
#include <ddk/wdm.h>

#include "driver/DriverFeed.h"

// wdm.h leaves these out.
extern "C" {
NTKERNELAPI HANDLE NTAPI PsGetCurrentProcessId(void);
NTSYSAPI NTSTATUS NTAPI ZwOpenProcess(HANDLE*, ACCESS_MASK, OBJECT_ATTRIBUTES*, CLIENT_ID*);
NTSYSAPI NTSTATUS NTAPI NtWriteVirtualMemory(HANDLE, void*, const void*, SIZE_T, SIZE_T*);
DRIVER_INITIALIZE DriverEntry;
}

namespace brennvar::standin {
namespace {

constexpr ULONG kTag = 0x77667642;                      // "Bvfw"
constexpr ACCESS_MASK kWriteProcess = 0x0008 | 0x0020;  // PROCESS_VM_OPERATION | PROCESS_VM_WRITE
constexpr std::size_t kHostilePadding = 5;              // "odd": less than any record
constexpr std::byte kHostileByte{0xFF};
constexpr std::size_t kOddTotals = 27;
constexpr std::size_t kOverstatement = sizeof(ConnectionEntry);

struct Table {
    std::byte* bytes;
    std::size_t size;
    std::size_t recordSize;
};

struct Question {
    LIST_ENTRY link;
    std::size_t packetSize;
    QueuedQuestion question;
    // the packet's bytes follow
};

enum DeviceNumber { kMainDevice, kControlDevice, kInfoDevice, kDeviceCount };
constexpr const wchar_t* kDeviceNames[kDeviceCount] = {L"\\Device\\brennvarfw", L"\\Device\\brennvarfw_ctl",
                                                       L"\\Device\\brennvarfw_nfo"};
constexpr const wchar_t* kLinkNames[kDeviceCount] = {L"\\??\\brennvarfw", L"\\??\\brennvarfw_ctl",
                                                     L"\\??\\brennvarfw_nfo"};

struct Driver {
    FAST_MUTEX lock;  // guards all that follows
    DEVICE_OBJECT* devices[kDeviceCount];
    Table connections;
    Table listeners;
    TrafficTotals totals;
    LIST_ENTRY pending;  // Question
    LIST_ENTRY fetched;  // Question
    QuestionCounts counts;
    HostileOrder hostile[4];  // one place for each of the interface's requests
};
Driver g_driver;

// One request: a buffer for both directions, as METHOD_BUFFERED has it.
struct Request {
    std::byte* buffer;
    std::size_t inputSize;
    std::size_t outputSize;
    std::size_t written = 0;
};

UNICODE_STRING Name(const wchar_t* text) {
    UNICODE_STRING name;
    RtlInitUnicodeString(&name, text);
    return name;
}

HostileOrder& HostilePlace(std::uint32_t request) {
    switch (request) {
        case kControlReadConnections: return g_driver.hostile[0];
        case kControlReadListeners: return g_driver.hostile[1];
        case kControlReadTotals: return g_driver.hostile[2];
        default: return g_driver.hostile[3];
    }
}

Hostility TakeHostility(std::uint32_t request) {
    HostileOrder& order = HostilePlace(request);
    if (order.answers == 0) return Hostility::None;
    --order.answers;
    return order.hostility;
}

// Claims more bytes than the caller's buffer holds. Wine passes the claim on and copies what fits.
void Overstate(Request& request) {
    request.written = request.outputSize + kOverstatement;
}

void Pad(Request& request, std::size_t size) {
    if (size > request.outputSize) size = request.outputSize;
    while (request.written < size) request.buffer[request.written++] = kHostileByte;
}

// --- what the interface asks ---

NTSTATUS ReadTable(const Table& table, std::uint32_t code, Request& request) {
    const Hostility hostility = TakeHostility(code);
    if (hostility == Hostility::Fail) return STATUS_UNSUCCESSFUL;
    // Whole entries only: what does not fit is left out.
    const std::size_t room = request.outputSize / table.recordSize * table.recordSize;
    std::size_t size = table.size < room ? table.size : room;
    if (hostility == Hostility::Short) size /= 2;
    if (size != 0) RtlCopyMemory(request.buffer, table.bytes, size);
    request.written = size;
    if (hostility == Hostility::Odd) Pad(request, size + kHostilePadding);
    if (hostility == Hostility::Long) Overstate(request);
    return STATUS_SUCCESS;
}

NTSTATUS ReadTotals(Request& request) {
    const Hostility hostility = TakeHostility(kControlReadTotals);
    if (hostility == Hostility::Fail) return STATUS_UNSUCCESSFUL;
    if (request.outputSize < sizeof(TrafficTotals)) return STATUS_BUFFER_TOO_SMALL;
    RtlCopyMemory(request.buffer, &g_driver.totals, sizeof(TrafficTotals));
    request.written = sizeof(TrafficTotals);
    if (hostility == Hostility::Short) request.written = sizeof(TrafficTotals) / 2;
    if (hostility == Hostility::Odd) request.written = kOddTotals;
    if (hostility == Hostility::Long) Overstate(request);
    return STATUS_SUCCESS;
}

NTSTATUS WriteToCaller(HANDLE process, std::uint64_t address, const void* bytes, std::size_t size) {
    if (size == 0) return STATUS_SUCCESS;
    SIZE_T written = 0;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the record carries addresses as numbers
    const NTSTATUS status = NtWriteVirtualMemory(process, reinterpret_cast<void*>(address), bytes, size, &written);
    if (!NT_SUCCESS(status)) return status;
    return written == size ? STATUS_SUCCESS : STATUS_PARTIAL_COPY;
}

NTSTATUS HandOut(const Question& question, const PromptExchangeBlock& block) {
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, nullptr, OBJ_KERNEL_HANDLE, nullptr, nullptr);
    CLIENT_ID client{PsGetCurrentProcessId(), nullptr};
    HANDLE process = nullptr;
    NTSTATUS status = ZwOpenProcess(&process, kWriteProcess, &attributes, &client);
    if (!NT_SUCCESS(status)) return status;
    status =
        WriteToCaller(process, block.requestAddress, &question.question.request, sizeof(ConnectionPromptRequest));
    if (NT_SUCCESS(status)) status = WriteToCaller(process, block.dataAddress, &question + 1, question.packetSize);
    ZwClose(process);
    return status;
}

NTSTATUS FetchQuestion(Request& request) {
    if (request.inputSize < sizeof(PromptExchangeBlock) || request.outputSize < sizeof(PromptExchangeBlock))
        return STATUS_INVALID_PARAMETER;
    PromptExchangeBlock block;
    RtlCopyMemory(&block, request.buffer, sizeof(block));
    if (block.dataSize != kQuestionDataSize) return STATUS_INVALID_PARAMETER;

    block.questionPresent = 0;
    if (!IsListEmpty(&g_driver.pending)) {
        auto* question = CONTAINING_RECORD(g_driver.pending.Flink, Question, link);
        const Hostility hostility = TakeHostility(kControlFetchQuestion);
        if (hostility == Hostility::Fail) return STATUS_UNSUCCESSFUL;
        if (hostility == Hostility::Odd) {
            char(&path)[sizeof(ConnectionPromptRequest::path)] = question->question.request.path;
            RtlFillMemory(path, sizeof(path), 'A');
        }
        // A question that cannot be handed out stays in the queue.
        const NTSTATUS status = HandOut(*question, block);
        if (!NT_SUCCESS(status)) return status;
        RemoveEntryList(&question->link);
        InsertTailList(&g_driver.fetched, &question->link);
        --g_driver.counts.pending;
        ++g_driver.counts.fetched;
        block.questionId = question->question.id;
        block.questionPresent = hostility == Hostility::Odd ? 0xFFFFFFFF : 1;
        RtlCopyMemory(request.buffer, &block, sizeof(block));
        request.written = hostility == Hostility::Short ? sizeof(block) / 2 : sizeof(block);
        if (hostility == Hostility::Long) Overstate(request);
        return STATUS_SUCCESS;
    }
    RtlCopyMemory(request.buffer, &block, sizeof(block));
    request.written = sizeof(block);
    return STATUS_SUCCESS;
}

// --- what the service feeds ---

void FreeTable(Table& table) {
    if (table.bytes) ExFreePoolWithTag(table.bytes, kTag);
    table.bytes = nullptr;
    table.size = 0;
}

NTSTATUS SetTable(Table& table, const Request& request) {
    std::byte* bytes = nullptr;
    if (request.inputSize != 0) {
        bytes = static_cast<std::byte*>(ExAllocatePoolWithTag(PagedPool, request.inputSize, kTag));
        if (!bytes) return STATUS_NO_MEMORY;
        RtlCopyMemory(bytes, request.buffer, request.inputSize);
    }
    FreeTable(table);
    table.bytes = bytes;
    table.size = request.inputSize;
    return STATUS_SUCCESS;
}

NTSTATUS QueueQuestion(const Request& request) {
    if (request.inputSize < sizeof(QueuedQuestion)) return STATUS_INVALID_PARAMETER;
    const std::size_t packetSize = request.inputSize - sizeof(QueuedQuestion);
    if (packetSize > kQuestionDataSize) return STATUS_INVALID_PARAMETER;
    auto* question = static_cast<Question*>(ExAllocatePoolWithTag(PagedPool, sizeof(Question) + packetSize, kTag));
    if (!question) return STATUS_NO_MEMORY;
    RtlCopyMemory(&question->question, request.buffer, sizeof(QueuedQuestion));
    RtlCopyMemory(question + 1, request.buffer + sizeof(QueuedQuestion), packetSize);
    question->packetSize = packetSize;
    InsertTailList(&g_driver.pending, &question->link);
    ++g_driver.counts.pending;
    return STATUS_SUCCESS;
}

NTSTATUS AnswerQuestion(const Request& request) {
    std::uint32_t id = 0;
    if (request.inputSize < sizeof(id)) return STATUS_INVALID_PARAMETER;
    RtlCopyMemory(&id, request.buffer, sizeof(id));
    for (LIST_ENTRY* link = g_driver.fetched.Flink; link != &g_driver.fetched; link = link->Flink) {
        auto* question = CONTAINING_RECORD(link, Question, link);
        if (question->question.id != id) continue;
        RemoveEntryList(link);
        ExFreePoolWithTag(question, kTag);
        --g_driver.counts.fetched;
        ++g_driver.counts.answered;
        return STATUS_SUCCESS;
    }
    return STATUS_NOT_FOUND;
}

NTSTATUS SetHostile(const Request& request) {
    HostileOrder order;
    if (request.inputSize < sizeof(order)) return STATUS_INVALID_PARAMETER;
    RtlCopyMemory(&order, request.buffer, sizeof(order));
    HostilePlace(order.request) = order;
    return STATUS_SUCCESS;
}

NTSTATUS Answer(std::uint32_t device, std::uint32_t code, Request& request) {
    if (device == kInfoDevice) {
        switch (code) {
            case kControlReadConnections: return ReadTable(g_driver.connections, code, request);
            case kControlReadListeners: return ReadTable(g_driver.listeners, code, request);
            case kControlReadTotals: return ReadTotals(request);
            default: return STATUS_INVALID_DEVICE_REQUEST;
        }
    }
    if (device == kControlDevice)
        return code == kControlFetchQuestion ? FetchQuestion(request) : STATUS_INVALID_DEVICE_REQUEST;
    switch (code) {
        case kFeedSetConnections: return SetTable(g_driver.connections, request);
        case kFeedSetListeners: return SetTable(g_driver.listeners, request);
        case kFeedSetTotals:
            if (request.inputSize != sizeof(TrafficTotals)) return STATUS_INVALID_PARAMETER;
            RtlCopyMemory(&g_driver.totals, request.buffer, sizeof(TrafficTotals));
            return STATUS_SUCCESS;
        case kFeedQueueQuestion: return QueueQuestion(request);
        case kFeedAnswerQuestion: return AnswerQuestion(request);
        case kFeedSetHostile: return SetHostile(request);
        case kFeedReadCounts:
            if (request.outputSize < sizeof(QuestionCounts)) return STATUS_BUFFER_TOO_SMALL;
            RtlCopyMemory(request.buffer, &g_driver.counts, sizeof(QuestionCounts));
            request.written = sizeof(QuestionCounts);
            return STATUS_SUCCESS;
        default: return STATUS_INVALID_DEVICE_REQUEST;
    }
}

// --- what the system calls ---

NTSTATUS Complete(IRP* irp, NTSTATUS status, std::size_t written) {
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = NT_SUCCESS(status) ? written : 0;
    IoCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

NTSTATUS NTAPI OpenOrClose(DEVICE_OBJECT*, IRP* irp) {
    return Complete(irp, STATUS_SUCCESS, 0);
}

NTSTATUS NTAPI Control(DEVICE_OBJECT* device, IRP* irp) {
    const IO_STACK_LOCATION* place = IoGetCurrentIrpStackLocation(irp);
    const auto& parameters = place->Parameters.DeviceIoControl;
    Request request{static_cast<std::byte*>(irp->AssociatedIrp.SystemBuffer), parameters.InputBufferLength,
                    parameters.OutputBufferLength};
    std::uint32_t number = kMainDevice;
    while (number + 1 < kDeviceCount && g_driver.devices[number] != device) ++number;
    ExAcquireFastMutex(&g_driver.lock);
    const NTSTATUS status = Answer(number, parameters.IoControlCode, request);
    ExReleaseFastMutex(&g_driver.lock);
    return Complete(irp, status, request.written);
}

void FreeQuestions(LIST_ENTRY& list) {
    while (!IsListEmpty(&list)) ExFreePoolWithTag(CONTAINING_RECORD(RemoveHeadList(&list), Question, link), kTag);
}

void NTAPI Unload(DRIVER_OBJECT*) {
    for (std::size_t number = 0; number < kDeviceCount; ++number) {
        if (!g_driver.devices[number]) continue;
        UNICODE_STRING link = Name(kLinkNames[number]);
        IoDeleteSymbolicLink(&link);
        IoDeleteDevice(g_driver.devices[number]);
        g_driver.devices[number] = nullptr;
    }
    FreeTable(g_driver.connections);
    FreeTable(g_driver.listeners);
    FreeQuestions(g_driver.pending);
    FreeQuestions(g_driver.fetched);
}

NTSTATUS Load(DRIVER_OBJECT* driver) {
    ExInitializeFastMutex(&g_driver.lock);
    InitializeListHead(&g_driver.pending);
    InitializeListHead(&g_driver.fetched);
    g_driver.connections.recordSize = sizeof(ConnectionEntry);
    g_driver.listeners.recordSize = sizeof(ListenerEntry);
    driver->MajorFunction[IRP_MJ_CREATE] = OpenOrClose;
    driver->MajorFunction[IRP_MJ_CLOSE] = OpenOrClose;
    driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = Control;
    driver->DriverUnload = Unload;
    for (std::size_t number = 0; number < kDeviceCount; ++number) {
        UNICODE_STRING name = Name(kDeviceNames[number]);
        UNICODE_STRING link = Name(kLinkNames[number]);
        NTSTATUS status =
            IoCreateDevice(driver, 0, &name, FILE_DEVICE_UNKNOWN, 0, FALSE, &g_driver.devices[number]);
        if (NT_SUCCESS(status)) status = IoCreateSymbolicLink(&link, &name);
        if (!NT_SUCCESS(status)) {
            Unload(driver);
            return status;
        }
        g_driver.devices[number]->Flags &= ~static_cast<ULONG>(DO_DEVICE_INITIALIZING);
    }
    return STATUS_SUCCESS;
}

}  // namespace
}  // namespace brennvar::standin

extern "C" NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING* registryPath) {
    // Wine takes a driver that imports from ntdll for a library and first calls its entry point as DllMain(module,
    // reason, reserved), which has to return TRUE. A reason is 0 to 3, no address is that small.
    constexpr std::uint32_t kHighestReason = 3;
    if (reinterpret_cast<std::uintptr_t>(registryPath) <= kHighestReason) return TRUE;
    return brennvar::standin::Load(driver);
}
