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

// Commands without a control of this template.
#define IDC_NAVIGATOR_FIRST 500
#define IDC_NAVIGATOR_LAST 516
#define IDC_PARAMS_CHANGED 1008 // render and repaint, after a change of gParams
#define IDC_PARAMS_CHANGED_TOO 1009
#define IDC_TEXTURE_DRAWER 1177
#define IDC_TONE_DRAWER 1178
#define IDC_ZOOM_FIT 9001    // Ctrl + 0
#define IDC_ZOOM_ACTUAL 9002 // Ctrl + 1
// The preview's notification: a pan finished, or a step of an offset drag.
#define QZ_PREVIEW_PANNED 9
// An edit's notification asking it to show its stored value again (Esc).
#define QZ_EDIT_RESTORE 27

// Hot keys of the dialog.
#define QZ_HOTKEY_ZOOM_UP 1
#define QZ_HOTKEY_ZOOM_DOWN 2
#define QZ_HOTKEY_FIT 3
#define QZ_HOTKEY_ACTUAL 4
