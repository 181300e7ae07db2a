// User store: small per-user numbers that outlive a session (update-check
// dates, "don't show again" flags). Windows keeps them in the registry under
// HKEY_CURRENT_USER\SOFTWARE\Quenzit\Environment; POSIX in the text file
// $XDG_CONFIG_HOME/Quenzit/Environment (or ~/.config/...), lines "name=value".
#pragma once

#include <cstdint>

// The stored value, or 0 when it is missing or unreadable.
uint32_t ReadUserValue(const char* name) noexcept;

// Stores `value` under `name` (which may contain spaces). False on failure.
bool WriteUserValue(const char* name, uint32_t value) noexcept;
