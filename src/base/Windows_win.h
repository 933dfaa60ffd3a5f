// The one way in which Windows headers enter: winsock2.h first, without the min and max macros.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>
// winsock2.h must stand before windows.h.
#include <windows.h>
