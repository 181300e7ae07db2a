// User store as REG_DWORD values under HKEY_CURRENT_USER.
#include "platform/UserStore.h"
#include "platform/win32/Win32.h"

namespace {

constexpr const char* kStoreKey = "SOFTWARE\\Quenzit\\Environment";

} // namespace

uint32_t ReadUserValue(const char* name) noexcept {
    if (!name) return 0;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, kStoreKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return 0;
    DWORD type = 0;
    DWORD value = 0;
    DWORD size = sizeof(value);
    LONG status = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
    RegCloseKey(key);
    return (status == ERROR_SUCCESS && type == REG_DWORD && size == sizeof(value)) ? value : 0;
}

bool WriteUserValue(const char* name, uint32_t value) noexcept {
    if (!name) return false;
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, kStoreKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return false;
    DWORD data = value;
    LONG status = RegSetValueExA(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&data), sizeof(data));
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}
