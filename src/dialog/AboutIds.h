// Ids of the About box's template, shared by the resource script and the box's code.
#pragma once

// The resource compiler reads this header too: plain numbers only.
#define IDD_ABOUT 152
#define IDC_ABOUT_CLOSE 1
#define IDC_ABOUT_SOUND 1005  // "Disable SFX" or "Enable SFX"
#define IDC_ABOUT_VERSION 674 // "ContainerLinkC", the version line
