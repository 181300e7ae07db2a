// Ids of the link dialog's template, shared by the resource script and the dialog's code.
#pragma once

// The resource compiler reads this header too: plain numbers only.
#define IDD_LINK 151
#define IDC_LINK_WASH 1099       // "Same as Wash tab settings"
#define IDC_LINK_SURFACE 1100    // "Same as Surface tab settings"
#define IDC_LINK_BACKGROUND 1101 // "Same as Background tab settings"
#define IDC_LINK_QUESTION 1102
