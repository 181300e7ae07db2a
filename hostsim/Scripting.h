// hostsim's scripting side: the classic descriptor procs behind PIDescriptorParameters
// (record and play), the descriptor registry, and the PICA action descriptor (2, 3), action
// list (1, 2), action reference (2, 3), basic action control (1, 2) and descriptor registry (1)
// suites. The host asks Acquire for any suite this side Owns.
//
// Every misuse of these interfaces by the plug-in is recorded, never crashes, and comes back
// from TakeMisuse. TakeMisuse is also the check for what is still open: call it when the
// plug-in is done (after Finish), and readers, writers and action objects not closed or freed
// by then are reported too (each once).
#pragma once

#include "host/abi/HostInterface.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace hostsim {

// The declarations below are the agreed interface, kept as written.
// clang-format off
class Descriptor;            // ordered list of (key, typed value); see Descriptor.h
class Registry;              // key string -> Descriptor, with a persistent flag; Load/Save a file
class DescriptorProcs;       // see DescriptorProcs.h
class ActionSuites;          // see ActionSuites.h

// What the scripting side needs to know of the document.
struct DocumentView {
    std::function<std::string()> targetLayerName;                       // "" when no layers
    std::function<bool(const std::string& layerName, bool& visible)> layerVisible; // false: no such layer
};

class Scripting {
public:
    Scripting(Registry& registry, DocumentView view);
    ~Scripting();
    Scripting(const Scripting&) = delete;
    Scripting& operator=(const Scripting&) = delete;

    // The PICA suites this side owns, or kSPSuiteNotFoundError for any other name, for a version
    // it does not have, or for a suite left out with Omit. `suite` receives the table.
    SPErr Acquire(const char* name, int32 version, const void** suite);
    SPErr Release(const char* name, int32 version);
    bool Owns(const char* name) const;        // one of the five suite names above
    void Omit(const std::string& suiteName);  // play a host without that suite

    // Classic scripting: the record's descriptorParameters. Null when omitted.
    PIDescriptorParameters* DescriptorParameters();
    void OmitDescriptorParameters();
    // Before Start: a descriptor to play (copied into a fresh host handle) and the playInfo
    // (0 dialog off, 1 display, 2 silent). nullptr plays nothing (descriptor handle null).
    void SetPlayback(const Descriptor* descriptor, int16 playInfo);
    // After Finish: what the plug-in recorded, if anything, and its recordInfo.
    bool TakeRecorded(Descriptor& recorded, int16& recordInfo);

    // Misuse seen (readers/writers left open, wrong reader, descriptors freed twice...).
    std::vector<std::string> TakeMisuse();

    // The callbacks are plain function pointers: while a selector runs, the host makes its
    // Scripting current so they can find it.
    static void SetCurrent(Scripting* scripting);

private:
    Registry& registry_;
    std::unique_ptr<DescriptorProcs> classic_;
    std::unique_ptr<ActionSuites> actions_;
    std::set<std::string> omitted_;
    bool omitParameters_ = false;
    // Acquires minus releases, per suite name and version, to catch a release too many. A
    // suite left acquired is the host's to report: it sees every suite.
    std::map<std::pair<std::string, int32>, int> held_;
    std::vector<std::string> misuse_;
};

// clang-format on
} // namespace hostsim
