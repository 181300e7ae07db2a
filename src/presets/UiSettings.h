// Settings of the user interface that outlive a run: "Quenzit.ini" beside the plug-in
// (window place and size, sharing resolution, sound of the Auto button) and the
// per-user "New version on server" flag of the update check.
#pragma once

#include <cstdint>
#include <string>

extern int32_t SharingResolution; // read and written back, otherwise unused
extern int32_t UseSoundForAuto;

inline constexpr const char* kIniFileName = "Quenzit.ini";

// Overlay the values of the file's known keys; an absent file changes nothing. The
// top position is written under a key that reads back as no key, so it never returns.
// Nothing happens while gParams does not exist.
void ReadUiSettings();
void ReadUiSettingsFrom(const std::string& path);

// Rewrites the whole file: the comment line and the six keys.
void WriteUiSettings();
void WriteUiSettingsTo(const std::string& path);

// The file's six values in a record of their own, for the host's About box, which runs
// without gParams: a sound switch made there is kept by writing the file back with the
// other values as they were read.
struct UiSettingsRecord {
    int32_t WindowLeft = 100, WindowTop = 100, WindowWidth = 828, WindowHeight = 602;
    int32_t SharingResolution = 1024, UseSoundForAuto = 1;
};
std::string UiSettingsPath();
// Overlays the values of the file's known keys on `into`.
void ReadUiSettingsRecord(const std::string& path, UiSettingsRecord& into);
void WriteUiSettingsRecord(const std::string& path, const UiSettingsRecord& values);

// The per-user flag set by the update check; 0 when missing.
uint32_t ReadNewVersionFlag();
void WriteNewVersionFlag(uint32_t value);
