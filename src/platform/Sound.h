// Playing a short sound held in memory (the Auto button's), and the captures that record
// it instead, so that no test makes a noise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Starts `wave`, a whole RIFF WAVE file in memory that stays alive while it plays, and
// returns at once; no default sound plays in its place. POSIX plays nothing.
// While a SoundCapture exists the call is only recorded there (its size). Otherwise, when
// the environment names a file in QZ_SOUND_LOG, "play SIZE" is appended to it instead.
// False when nothing was started.
bool PlayWaveAsync(const void* wave, size_t size) noexcept;

// While alive, every sound of the process is recorded here and none is played. Captures
// nest: the innermost one records.
class SoundCapture {
public:
    SoundCapture() noexcept;
    ~SoundCapture();
    SoundCapture(const SoundCapture&) = delete;
    SoundCapture& operator=(const SoundCapture&) = delete;

    std::vector<size_t> Sizes() const { return sizes_; }

private:
    friend bool PlayWaveAsync(const void*, size_t) noexcept;

    std::vector<size_t> sizes_;
    SoundCapture* outer_;
};
