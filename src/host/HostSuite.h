// A suite acquired through the host's basic suite, released when it goes out of scope.
#pragma once

#include "host/Session.h"

#include <algorithm>

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

// Convert8 over a row of any length: one call takes at most 32767 colours (its count is
// 16-bit), so longer rows go in runs. Rows up to that length make the one call as before.
inline void ConvertColorRuns(const ColorSpaceSuite& colors, int16 from, int16 to, Color8* row, int32 count) {
    constexpr int32 kMaxRun = 32767;
    int32 done = 0;
    do {
        const int32 n = std::min(count - done, kMaxRun);
        colors->Convert8(from, to, row + done, int16(n));
        done += n;
    } while (done < count);
}
