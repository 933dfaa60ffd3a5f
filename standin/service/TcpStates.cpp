#include "service/TcpStates.h"

namespace brennvar::standin {

std::uint32_t DriverStateOf(std::uint32_t systemState, bool accepted) {
    switch (systemState) {
        case 1: return 10;                // MIB_TCP_STATE_CLOSED
        case 3: return 1;                 // SYN_SENT
        case 4: return 2;                 // SYN_RCVD
        case 5: return accepted ? 3 : 4;  // ESTAB
        case 6: return 5;                 // FIN_WAIT1
        case 7: return 6;                 // FIN_WAIT2
        case 8: return 8;                 // CLOSE_WAIT
        case 9:                           // CLOSING: the driver has no code of its own for it
        case 10: return 9;                // LAST_ACK
        case 11: return 7;                // TIME_WAIT
        case 12: return 10;               // DELETE_TCB
        default: return 0;
    }
}

}  // namespace brennvar::standin
