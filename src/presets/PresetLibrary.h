// The preset library on disk: the folder of each kind under the Presets folder, the
// current sub-folder of the browsable kinds, the rows of a kind's list, loading,
// saving (the caller asks the questions) and deleting, and the names for the strip.
#pragma once

#include <string>
#include <vector>

// The browsable kinds 0 to 4 each have a current sub-folder: empty, or ending in a separator.
extern std::string PresetSubFolder[5];

// "Basic", "Wash", ... "Colors", "BackPalette"; null for a kind out of range.
const char* PresetKindFolder(int kind);

// Presets folder + kind folder + separator + `category` (with a separator added unless it
// ends in / or \). Kinds 5 to 7 take no category.
std::string PresetFolderPath(int kind, const std::string& category);
// The folder of `kind` with its current sub-folder, and a file of it.
std::string PresetListFolder(int kind);
std::string PresetFilePath(const std::string& name, int kind);

// A list row that stands for a folder starts with a TAB.
inline bool IsFolderRow(const std::string& row) { return !row.empty() && row[0] == '\t'; }

// The rows of a kind's list in list order: kind 0 starts with "Reset All" and "Last Used
// Settings" and is not sorted; the others are sorted as a sorted list box would (so folders,
// with their TAB, come first). Folders other than "." (and ".." at the top level) are rows;
// then every "*.qztpst" file with the archive attribute, without the extension.
std::vector<std::string> FillPresetList(int kind);

// Double click on a folder row: ".." goes up one component, another name goes into it.
void EnterPresetFolder(int kind, const std::string& folderRow);

// Opens the file of `name` (no extension) by the path rule, checks the first line and
// parses. Sets the colour labels to "Custom" first as the kind asks; runs the
// navigator hook after kinds that change second layers. False when nothing was read.
bool LoadPreset(const std::string& name, int kind);

// The name a typed one is saved under: a typed ".qztpst" is cut off a name longer than 7
// characters.
std::string PresetSaveName(const std::string& typed);
// Whether `name` can be one file of the kind's folder on every system: no separators,
// no characters Windows refuses, no device name, and a short enough path.
bool PresetNameFits(const std::string& name, int kind);

enum class SaveResult { Created, Overwritten, Exists, EmptyName, CannotCreate };

// Saves gParams as a preset of `kind` under `typedName` (a typed ".qztpst" is cut off a
// name longer than 7 characters). An existing file is rewritten only with `overwrite`;
// otherwise the answer is Exists and the caller asks. Created means a new row belongs
// in the list. A file that cannot be created, or a name that does not fit, tells the user
// "Cannot Save File!" and writes nothing.
SaveResult SavePreset(int kind, const std::string& typedName, bool overwrite);

// Deletes the file of a row, with no question. False for a folder row or a failure.
bool DeletePresetFile(const std::string& row, int kind);

// For the preset strip: "none", then every preset of the kind's folder (kind 7:
// "BackPalette") without extension, in directory order, leaving out one named "none".
std::vector<std::string> ListPresetNames(int kind);
