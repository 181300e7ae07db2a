// Ids of the box that asks for a new preset's name.
#pragma once

// The resource compiler reads this header too: plain numbers only.
#define IDD_PRESET_SAVE 147
#define IDC_PRESET_NAME 1358
#define IDC_PRESET_PROMPT 1359
