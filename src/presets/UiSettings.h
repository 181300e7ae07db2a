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

// The per-user flag set by the update check; 0 when missing.
uint32_t ReadNewVersionFlag();
void WriteNewVersionFlag(uint32_t value);
