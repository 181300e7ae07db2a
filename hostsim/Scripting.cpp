#include "Scripting.h"

#include "ActionSuites.h"
#include "Descriptor.h"
#include "DescriptorProcs.h"
#include "Registry.h"

#include <cstring>

namespace hostsim {
namespace {

Scripting* gCurrent = nullptr;

const char* const kOwnedSuites[] = {kPSActionDescriptorSuite, kPSActionListSuite, kPSActionReferenceSuite,
                                    kPSBasicActionControlSuite, kPSDescriptorRegistrySuite};

// Short names for misuse messages.
std::string SuiteLabel(const std::string& name) {
    if (name == kPSActionDescriptorSuite) return "action descriptor suite";
    if (name == kPSActionListSuite) return "action list suite";
    if (name == kPSActionReferenceSuite) return "action reference suite";
    if (name == kPSBasicActionControlSuite) return "basic action control suite";
    if (name == kPSDescriptorRegistrySuite) return "descriptor registry suite";
    return name;
}

} // namespace

Scripting::Scripting(Registry& registry, DocumentView view)
    : registry_(registry), classic_(std::make_unique<DescriptorProcs>()),
      actions_(std::make_unique<ActionSuites>(std::move(view))) {}

Scripting::~Scripting() {
    if (gCurrent == this) SetCurrent(nullptr);
}

SPErr Scripting::Acquire(const char* name, int32 version, const void** suite) {
    if (!name || !suite) return kSPBadParameterError;
    *suite = nullptr;
    if (!Owns(name) || omitted_.count(name)) return kSPSuiteNotFoundError;
    const void* table = nullptr;
    if (std::strcmp(name, kPSDescriptorRegistrySuite) == 0) {
        if (version == kPSDescriptorRegistrySuiteVersion1) table = DescriptorRegistrySuite();
    } else {
        table = ActionSuites::Table(name, version);
    }
    if (!table) return kSPSuiteNotFoundError;
    *suite = table;
    ++held_[{name, version}];
    return kSPNoError;
}

SPErr Scripting::Release(const char* name, int32 version) {
    if (!name) return kSPBadParameterError;
    if (!Owns(name)) return kSPSuiteNotFoundError;
    int& held = held_[{name, version}];
    if (held <= 0) {
        misuse_.push_back("ReleaseSuite: the " + SuiteLabel(name) + " version " + std::to_string(version) +
                          " released more often than acquired");
        return kSPBadParameterError;
    }
    --held;
    return kSPNoError;
}

bool Scripting::Owns(const char* name) const {
    if (!name) return false;
    for (const char* owned : kOwnedSuites)
        if (std::strcmp(name, owned) == 0) return true;
    return false;
}

void Scripting::Omit(const std::string& suiteName) { omitted_.insert(suiteName); }

PIDescriptorParameters* Scripting::DescriptorParameters() { return omitParameters_ ? nullptr : classic_->Parameters(); }

void Scripting::OmitDescriptorParameters() { omitParameters_ = true; }

void Scripting::SetPlayback(const Descriptor* descriptor, int16 playInfo) {
    classic_->SetPlayback(descriptor, playInfo);
}

bool Scripting::TakeRecorded(Descriptor& recorded, int16& recordInfo) {
    return classic_->TakeRecorded(recorded, recordInfo);
}

std::vector<std::string> Scripting::TakeMisuse() {
    std::vector<std::string> all = std::move(misuse_);
    misuse_.clear();
    for (std::string& m : classic_->TakeMisuse()) all.push_back(std::move(m));
    for (std::string& m : actions_->TakeMisuse()) all.push_back(std::move(m));
    return all;
}

void Scripting::SetCurrent(Scripting* scripting) {
    gCurrent = scripting;
    DescriptorProcs::SetCurrent(scripting ? scripting->classic_.get() : nullptr);
    ActionSuites::SetCurrent(scripting ? scripting->actions_.get() : nullptr);
    SetSuiteRegistry(scripting ? &scripting->registry_ : nullptr);
}

} // namespace hostsim
