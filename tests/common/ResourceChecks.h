// Field-by-field checks of the PiPL and terminology resources, shared by the
// native test of the generator and the Win64 test of the built module.
#pragma once

#include <cstddef>
#include <cstdint>

void CheckPiplResource(const uint8_t* data, size_t size);
void CheckTerminologyResource(const uint8_t* data, size_t size);
