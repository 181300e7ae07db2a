// Classic scripting: the read and write descriptor procs and the PIDescriptorParameters
// record that carries them to the plug-in, for recording and for playing.
//
// Reading (version 0, 18 procs):
// - openReadDescriptor takes a host handle holding a descriptor and an optional 0-terminated
//   key array. Each time getKey returns a key, the first array entry still holding that key is
//   overwritten with typeNull ('null'), so entries left unchanged were absent. A null handle
//   opens nothing: NULL, and no misuse (plug-ins open whatever the record holds).
// - getKey returns every key of the descriptor in order (not only those in the array), with
//   its type and flags: actionEnumeratedParameter for enumerated values, actionListParameter
//   for lists, 0 otherwise.
// - Each get reads the value of the key getKey last returned. A value of another type answers
//   paramErr (-50); a get before the first key or after the last answers paramErr too.
//   getCount reads an integer (what putCount writes) or the length of a list.
// - Errors are sticky: the reader keeps the most serious one (the first negative error, or a
//   coercion when nothing worse happened) and close returns it. Later gets still work.
// - getText and getAlias return a new host handle of raw bytes (no length, no terminator),
//   getObject a new host handle holding the sub-descriptor; the plug-in disposes them.
// - getString fills a Str255: length byte and characters, no terminator; a longer text is cut
//   to 255 characters and answers coercedParamErr (2).
// - getPinnedInteger/Float/UnitFloat pin into [min, max] and answer coercedParamErr when they
//   had to; a null bound pointer means no bound on that side. getPinnedUnitFloat returns the
//   stored unit; asking for another unit (not 0 and not unitNone) answers paramErr.
// Writing (version 0, 16 procs): puts add keys in order (a key put twice keeps its first
// place); floats come by pointer, putString takes a Pascal string, putText/putAlias/putObject
// copy from host handles the plug-in keeps and disposes. putCount writes an integer, the
// scoped puts a global class or object. closeWriteDescriptor makes a new host handle.
// A simple reference is a reference of one part; its keyData carries the name (formName), the
// index (formIndex, formIdentifier, and formOffset as a signed value), the enum type and value
// (formEnumerated) or, in `type`, the property key (formProperty).
//
// Misuse recorded: a reader or writer never closed (reported by TakeMisuse), one used after
// close or never opened, a handle that is not a live host handle, or one holding no descriptor.
#pragma once

#include "Descriptor.h"

#include <memory>
#include <string>
#include <vector>

namespace hostsim {

class DescriptorProcs {
public:
    DescriptorProcs();
    ~DescriptorProcs();
    DescriptorProcs(const DescriptorProcs&) = delete;
    DescriptorProcs& operator=(const DescriptorProcs&) = delete;

    // The record handed to the plug-in, with this object's own copies of the proc tables.
    PIDescriptorParameters* Parameters();

    // A descriptor to play, copied into a fresh host handle (nullptr: nothing to play), and the
    // playInfo. Disposes the handle of an earlier playback that is still the host's.
    void SetPlayback(const Descriptor* descriptor, int16 playInfo);
    // Reads and disposes the handle the plug-in left in `descriptor` (as a host does after
    // Finish) and clears the field. If the plug-in left the played handle in place, that is
    // what a host records. False when the field is null or holds no descriptor.
    bool TakeRecorded(Descriptor& recorded, int16& recordInfo);

    // Misuse since the last call, including readers and writers still open now.
    std::vector<std::string> TakeMisuse();

    // The procs are plain function pointers; they work on the current object.
    static void SetCurrent(DescriptorProcs* procs);

    struct State;

private:
    std::unique_ptr<State> state_;
};

} // namespace hostsim
