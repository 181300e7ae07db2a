// The module the dialogs' code lives in: their templates, art and classes come from it,
// whatever the host's own module is.
#pragma once

#include <windows.h>

inline HINSTANCE ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&ThisModule), &module);
    return module;
}
