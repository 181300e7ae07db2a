// A suite acquired through the host's basic suite, released when it goes out of scope.
#pragma once

#include "host/Session.h"

template <typename Table> class HostSuite {
public:
    HostSuite(const char* name, int32 version) : name_(name), version_(version) {
        const void* table = nullptr;
        if (const SPBasicSuite* basic = BasicSuite(); basic && basic->AcquireSuite(name, version, &table) == 0)
            table_ = static_cast<const Table*>(table);
    }
    ~HostSuite() {
        if (table_) BasicSuite()->ReleaseSuite(name_, version_);
    }
    HostSuite(const HostSuite&) = delete;
    HostSuite& operator=(const HostSuite&) = delete;

    const Table* operator->() const { return table_; }
    const Table& operator*() const { return *table_; }
    explicit operator bool() const { return table_ != nullptr; }

private:
    const char* name_;
    int32 version_;
    const Table* table_ = nullptr;
};

using ColorSpaceSuite = HostSuite<PSColorSpaceSuite>;
