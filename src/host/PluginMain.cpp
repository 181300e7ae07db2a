#include "host/PluginMain.h"

QZ_EXPORT void PluginMain(int16_t selector, void* record, intptr_t* dataSlot, int16_t* result) {
    (void)selector;
    (void)record;
    (void)dataSlot;
    if (result) *result = 0;
}
