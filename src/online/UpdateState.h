// What the update check has learnt in this session. The check sets it; the dialog's
// About button reads it to choose its pictures.
#pragma once

extern bool NewVersionKnown; // a newer version stands on the server
extern float LatestVersion;  // the server's latest version, 0 when unknown

inline constexpr float kProgramVersion = 2.0f;
