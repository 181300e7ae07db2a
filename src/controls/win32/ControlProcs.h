// The window procedures of the family's classes, for its registration table.
#pragma once

#include <windows.h>

LRESULT CALLBACK PictureProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK LabelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK RotorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK MacSliderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK SwatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
LRESULT CALLBACK LinkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
