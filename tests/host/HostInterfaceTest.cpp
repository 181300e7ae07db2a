// Host interface declarations: the byte-level facts that layout checks cannot state.
#include "host/abi/HostInterface.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

Boolean AbortRequested() { return 0x7F; }

// A code's value is its big-endian reading; in memory it is little-endian, which is how a
// host compares it byte for byte.
TEST(HostInterface, FourCharacterCodes) {
    EXPECT_EQ(FourCC("8BIM"), 0x3842494Du);
    unsigned char bytes[4];
    std::memcpy(bytes, &kPhotoshopSignature, sizeof bytes);
    const unsigned char expected[4] = {0x4D, 0x49, 0x42, 0x38};
    EXPECT_EQ(std::memcmp(bytes, expected, sizeof bytes), 0);

    // A character above 0x7F must not sign-extend over its neighbours.
    EXPECT_EQ(FourCC("\xFF\x61\x62\x63"), 0xFF616263u);
    EXPECT_EQ(kSPSuiteNotFoundError, 0x53214664);
}

// Bytes a host writes at its offsets come back through our fields, including the pointer
// and int64 that pack 4 leaves on 4-byte boundaries and the vertical-first points.
TEST(HostInterface, FilterRecordReadsHostBytes) {
    unsigned char raw[sizeof(FilterRecord)] = {};
    const auto put = [&raw](size_t offset, const auto& value) { std::memcpy(raw + offset, &value, sizeof value); };
    const TestAbortProc abort = &AbortRequested;
    const int16 imageSize[2] = {300, 400};
    const int16 filterRect[4] = {1, 2, 299, 398};
    const int64 maxSpace = 0x123456789A;
    put(4, abort);
    put(28, imageSize);
    put(34, filterRect);
    put(528, Boolean(1));
    put(552, maxSpace);

    FilterRecord record;
    std::memcpy(&record, raw, sizeof record);
    // The assertions bind references, which a field off its natural alignment must not meet:
    // read pointers and int64s into locals first.
    const TestAbortProc readAbort = record.abortProc;
    const int64 readMaxSpace = record.maxSpace64;
    const int64 readBufferSpace = record.bufferSpace64;
    EXPECT_EQ(readAbort, abort);
    EXPECT_EQ(readAbort(), 0x7F);
    EXPECT_EQ(record.imageSize.v, 300);
    EXPECT_EQ(record.imageSize.h, 400);
    EXPECT_EQ(record.filterRect.top, 1);
    EXPECT_EQ(record.filterRect.left, 2);
    EXPECT_EQ(record.filterRect.bottom, 299);
    EXPECT_EQ(record.filterRect.right, 398);
    EXPECT_NE(record.createNewLayer, 0);
    EXPECT_EQ(readMaxSpace, maxSpace);
    EXPECT_EQ(readBufferSpace, 0);

    BigDocumentStruct big = {};
    const int32 imageSize32[2] = {70000, 50000};
    std::memcpy(reinterpret_cast<unsigned char*>(&big) + 4, imageSize32, sizeof imageSize32);
    EXPECT_EQ(big.imageSize32.v, 70000);
    EXPECT_EQ(big.imageSize32.h, 50000);
}

} // namespace
