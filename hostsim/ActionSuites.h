// The PICA action suites: action descriptor (versions 2 and 3), action list (1 and 2), action
// reference (2 and 3) and basic action control (1 and 2). All answer OSErr and take floats by
// value.
//
// Objects (descriptors, lists, references) belong to the plug-in from Make, or from any call
// that hands one out (GetObject, GetList, GetReference, GetContainer, HandleToDescriptor,
// basic action control's Get, the registry's Get), until it frees them. Put calls copy what
// they are given. Freed objects stay known, so a second Free or a use after Free is recorded
// as misuse and answers paramErr instead of crashing; so do unknown, null or wrong-kind objects.
//
// Answers:
// - a key that is absent: errMissingParameter (-1715); a value of another type, an index out
//   of range, a null output pointer: paramErr (-50).
// - GetString and GetName copy at most maxLength - 1 characters and a terminator (maxLength
//   counts the terminator; 0 answers paramErr); a longer string is cut, with noErr.
// - PutZString, GetZString, PutNameZString, GetNameZString: kErrNoZStrings, as this host
//   offers no ASZString suite.
// - Reference getters read the first part; GetContainer gives null (and noErr) for a
//   reference of one part.
// - Basic action control Get resolves ('Prpr', property) + a layer part, where the layer part
//   is PutEnumerated('Lyr ', 'Ordn' or 'enum', 'Trgt') for the target layer or
//   PutName('Lyr ', name). Property 'Nm  ' gives {'Nm  ': text}, 'Vsbl' gives
//   {'Vsbl': boolean}; a layer part alone gives both. Anything else, or a layer the document
//   does not have, answers kErrNoSuchElement (-1728).
// - StringIDToTypeID knows common ids ("layer", "name", "visible", "property", "ordinal",
//   "targetEnum", ...) and gives any other string a new runtime id (from 0x1000, never a
//   printable 4-character code). TypeIDToStringID answers paramErr for an id with no string
//   or a buffer too small. MakeStringAlias makes a new string id name an existing one.
#pragma once

#include "Descriptor.h"
#include "Scripting.h"

#include <memory>
#include <string>
#include <vector>

namespace hostsim {

constexpr OSErr kErrNoSuchElement = -1728;
constexpr OSErr kErrNoZStrings = errPlugInHostInsufficient;

class ActionSuites {
public:
    explicit ActionSuites(DocumentView view);
    ~ActionSuites();
    ActionSuites(const ActionSuites&) = delete;
    ActionSuites& operator=(const ActionSuites&) = delete;

    // The table of one of the suites above for that version, or null.
    static const void* Table(const char* name, int32 version);

    // A new descriptor object the plug-in owns (it frees it with the descriptor suite).
    PIActionDescriptor NewDescriptor(const Descriptor& descriptor);
    // The descriptor behind an object the plug-in passes in; null, with misuse recorded
    // against `operation`, for an unknown, freed or wrong-kind object.
    const Descriptor* FindDescriptor(PIActionDescriptor descriptor, const char* operation);
    void RecordMisuse(std::string what);

    // Misuse since the last call, including objects still not freed now.
    std::vector<std::string> TakeMisuse();

    static ActionSuites* Current();
    static void SetCurrent(ActionSuites* suites);

    struct State;

private:
    std::unique_ptr<State> state_;
};

} // namespace hostsim
