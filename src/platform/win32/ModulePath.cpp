// Module path: the DLL (or executable) that holds this function.
#include "platform/ModulePathBackend.h"
#include "platform/win32/Win32.h"

std::string SystemModulePath() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&SystemModulePath), &module))
        return {};
    // Long paths do not fit MAX_PATH; grow until the name is not truncated.
    for (DWORD size = MAX_PATH; size <= 65536; size *= 2) {
        std::string path(size, '\0');
        DWORD length = GetModuleFileNameA(module, path.data(), size);
        if (length == 0) return {};
        if (length < size) {
            path.resize(length);
            return path;
        }
    }
    return {};
}
