#pragma once

/// The automation types and functions: the system's own on Windows, elsewhere ours of the same names and layout.
#ifdef _WIN32

#include <windows.h>
// The order matters: the two below build on windows.h.
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>
// The system's interfaces have public destructors; ours build on them and are deleted by nobody but themselves.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

#else

#include "abi/Interfaces.h"

#endif
