// The shell's icon handlers are COM objects, which the thread that calls them has to be ready for. A thread that
// does keeps one of these for as long as it may call them.
#pragma once

#include "base/Windows_win.h"
// windows.h must stand before this.
#include <objbase.h>

namespace brennvar {

class ComOfThread {
public:
    ComOfThread() : m_result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ComOfThread(const ComOfThread&) = delete;
    ComOfThread& operator=(const ComOfThread&) = delete;
    ~ComOfThread() {
        if (SUCCEEDED(m_result)) ::CoUninitialize();
    }

private:
    const HRESULT m_result;
};

}  // namespace brennvar
