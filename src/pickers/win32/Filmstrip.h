// The preset strip at the top of the Background page (control 1157): one picture per
// background preset, five at a time, a click applies it.
#pragma once

#include <windows.h>

void RegisterFilmstripClass();
// When the Background page is made: binds the template's control, lays it out, makes the pictures.
void AttachFilmstrip(HWND control);
void DestroyFilmstrip();
