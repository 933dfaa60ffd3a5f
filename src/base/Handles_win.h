// Owners for the kinds of Windows handles that the program holds. Empty is INVALID_HANDLE_VALUE for files, pipes
// and devices, null for everything else.
#pragma once

#include "base/UniqueHandle.h"
#include "base/Windows_win.h"

namespace brennvar {

struct FileHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { ::CloseHandle(handle); }
};
struct KernelHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::CloseHandle(handle); }
};
struct FindHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { ::FindClose(handle); }
};
struct KeyTraits {
    using Type = HKEY;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type key) noexcept { ::RegCloseKey(key); }
};
struct IconTraits {
    using Type = HICON;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type icon) noexcept { ::DestroyIcon(icon); }
};
struct MenuTraits {
    using Type = HMENU;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type menu) noexcept { ::DestroyMenu(menu); }
};
struct MemoryDcTraits {
    using Type = HDC;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type dc) noexcept { ::DeleteDC(dc); }
};
// Fonts, brushes, pens, bitmaps and regions. None may be selected into a DC when it is closed.
template <class Handle>
struct GdiObjectTraits {
    using Type = Handle;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type object) noexcept { ::DeleteObject(object); }
};

using UniqueFile = UniqueHandle<FileHandleTraits>;  // file, pipe or device
using UniqueEvent = UniqueHandle<KernelHandleTraits>;
using UniqueMutex = UniqueHandle<KernelHandleTraits>;
using UniqueProcess = UniqueHandle<KernelHandleTraits>;
using UniqueToken = UniqueHandle<KernelHandleTraits>;
using UniqueFind = UniqueHandle<FindHandleTraits>;
using UniqueKey = UniqueHandle<KeyTraits>;
using UniqueIcon = UniqueHandle<IconTraits>;
using UniqueMenu = UniqueHandle<MenuTraits>;
using UniqueMemoryDc = UniqueHandle<MemoryDcTraits>;
using UniqueFont = UniqueHandle<GdiObjectTraits<HFONT>>;
using UniqueBrush = UniqueHandle<GdiObjectTraits<HBRUSH>>;
using UniquePen = UniqueHandle<GdiObjectTraits<HPEN>>;
using UniqueBitmap = UniqueHandle<GdiObjectTraits<HBITMAP>>;
using UniqueRegion = UniqueHandle<GdiObjectTraits<HRGN>>;

}  // namespace brennvar
