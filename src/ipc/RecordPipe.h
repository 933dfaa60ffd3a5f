// The server side of a pipe with one instance, as a seam: one client after the other, a record in and perhaps one
// out. All calls come on one thread; none of them waits for a client without limit, except for the next one to
// come.
#pragma once

#include <cstddef>
#include <span>

namespace brennvar {

class RecordPipe {
public:
    virtual ~RecordPipe() = default;

    // False when the pipe cannot be made, as when somebody else has one of this name.
    [[nodiscard]] virtual bool Create() = 0;
    // Waits for the next client. False when the program stops, or the wait has failed.
    [[nodiscard]] virtual bool Accept() = 0;
    // One message of the client, in the front of the buffer; its size, 0 when none came in time, or a longer one.
    [[nodiscard]] virtual std::size_t Read(std::span<std::byte> buffer) = 0;
    // False when it could not be written in time.
    virtual bool Write(std::span<const std::byte> record) = 0;
    // Returns when the client has read what was written, has gone, or has had its time, or the program stops.
    virtual void Flush() = 0;
    // Lets the client go; what it has not read is lost.
    virtual void Disconnect() = 0;
};

}  // namespace brennvar
