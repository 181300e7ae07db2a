// The module's one entry point, as the host calls it.
#pragma once

#include <cstdint>

#ifdef _WIN32
#define QZ_EXPORT extern "C" __declspec(dllexport)
#else
#define QZ_EXPORT extern "C" __attribute__((visibility("default")))
#endif

QZ_EXPORT void PluginMain(int16_t selector, void* record, intptr_t* dataSlot, int16_t* result);
