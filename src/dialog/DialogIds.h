// Ids of the main dialog's template, shared by the resource script, the dialog's code
// and its tests. The page templates keep their ids in headers of their own.
#pragma once

#define QZ_MAIN_DIALOG "DISSOLVEDIALOG"

// The resource compiler reads this header too: plain numbers only.
#define IDD_OK 1
#define IDD_CANCEL 2
#define IDC_TABS 999
#define IDC_ZOOM_UP 1000   // the picture grows
#define IDC_ZOOM_DOWN 1001 // the picture shrinks
#define IDC_PREVIEW 1002
#define IDC_ZOOM_LABEL 1003
#define IDC_PROGRESS 1004
#define IDC_RIGHT_PANE 1010 // hidden; its rectangle places the right pane
#define IDC_UNUSED_HIDE 1014
#define IDC_OPTION_BASIC 1022
#define IDC_OPTION_WASH 1023
#define IDC_OPTION_BACKGROUND 1024
#define IDC_OPTION_SURFACE 1025
#define IDC_LABEL_BASIC 9111
#define IDC_LABEL_WASH 1112
#define IDC_LABEL_BACKGROUND 1113
#define IDC_LABEL_SURFACE 1114
#define IDC_UNUSED_BUTTON 1125
#define IDC_HELP_BUTTON 1126
#define IDC_ALL_PRESETS 1127
#define IDC_AUTO 1129
#define IDC_ABOUT 1130
#define IDC_HEADER_LEFT 1161
#define IDC_HEADER_RIGHT 1128
#define IDC_UNUSED_ICON 1158
