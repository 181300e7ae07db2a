// Parameters as a host hands them to the plug-in in a played action step: keys of the
// parameter table, typed by the field's kind.
#pragma once

#include "hostsim/Descriptor.h"
#include "state/Parameters.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// The defaults, or the Auto look from `randomSeed` when there is one, overlaid by each preset
// in order; then every keyed field into `played`. The plug-in must know its data folder.
// False with the failing file and reason in `error` when a preset cannot be read.
bool PutRecord(const std::vector<std::string>& presets, const std::optional<int64_t>& randomSeed,
               hostsim::Descriptor& played, std::string& error);

// Every keyed field of a parameter block into `out`, typed as a played step carries it
// (the link flags live outside the block and are left out).
void PutBlock(const FilterParameters& record, hostsim::Descriptor& out);

// One KEY=VALUE into `played`, replacing what was there. "" when it is taken, else what is
// wrong; values outside the field's range are taken and add a warning.
std::string PutSetting(const std::string& setting, hostsim::Descriptor& played, std::vector<std::string>& warnings);

// Every key with its field, type, default and range, one a line.
void PrintParameterTable(std::FILE* out);

// The fields a preset file sets, with their values, one a line. False with the reason
// (without the path) when the file cannot be read as a preset.
bool ShowPreset(const std::string& path, std::FILE* out, std::string& error);
