// BoxBlurRaster: a separable box blur over the whole allocated block.
//
// The block is every byte of every plane, border included, taken as one array of
// Rows * Planes rows of Columns bytes with no regard of planes. The horizontal pass
// runs a sliding sum along each row but the block's last; the vertical pass reads
// that back with rows wrapping around the block. Both divide by 2r + 1 whatever lies
// at the edges. Callers clear the border ring first, so sample 0 of a row is 0 and
// the edge pixels simply come out darker.
#include "raster/Raster.h"

#include <algorithm>
#include <vector>

namespace {

int64_t Wrap(int64_t row, int64_t rows) {
    const int64_t m = row % rows;
    return m < 0 ? m + rows : m;
}

} // namespace

bool BoxBlurRaster(Raster& raster, int32_t r) {
    if (r < 0) return false;
    uint8_t* block = raster.Pixels();
    if (!block) return false;
    const int64_t columns = raster.Columns();
    const int64_t rows = int64_t(raster.Rows()) * raster.Planes;
    // The temporary covers the whole block, so its last row is there to stay 0.
    Raster temp;
    temp.MakeRaster(raster.Mode, RasterRect{0, 0, raster.Rows(), raster.Columns()}, raster.Planes, raster.Desc.depth, 0,
                    0);
    uint8_t* t = temp.Pixels();
    if (!t) return false;
    const int64_t radius = r;
    const int64_t divisor = 2 * radius + 1;

    // Horizontal: the sum starts with samples 0 .. min(Columns - 1, r + 1) - 1 and is
    // never rebuilt inside a row; each step adds the sample at min(Columns - 1, x + r)
    // and takes off the one at max(0, x - r - 1).
    for (int64_t y = 0; y + 1 < rows; ++y) {
        const uint8_t* s = block + y * columns;
        uint8_t* out = t + y * columns;
        int64_t sum = 0;
        const int64_t first = std::min(columns - 1, radius + 1);
        for (int64_t i = 0; i < first; ++i) sum += s[i];
        out[0] = uint8_t(sum / divisor);
        for (int64_t x = 1; x < columns; ++x) {
            sum += s[std::min(columns - 1, x + radius)];
            sum -= s[std::max<int64_t>(0, x - radius - 1)];
            out[x] = uint8_t(sum / divisor);
        }
    }

    // Vertical: the window of row 0 is rows -r .. r modulo the block's row count.
    // Whole turns of a window taller than the block count every row that many times.
    std::vector<int64_t> table(size_t(columns), 0);
    const int64_t turns = divisor / rows;
    if (turns > 0) {
        for (int64_t y = 0; y < rows; ++y) {
            const uint8_t* row = t + y * columns;
            for (int64_t x = 0; x < columns; ++x) table[size_t(x)] += row[x];
        }
        for (int64_t x = 0; x < columns; ++x) table[size_t(x)] *= turns;
    }
    for (int64_t k = 0; k < divisor % rows; ++k) {
        const uint8_t* row = t + Wrap(k - radius, rows) * columns;
        for (int64_t x = 0; x < columns; ++x) table[size_t(x)] += row[x];
    }
    for (int64_t y = 0; y < rows; ++y) {
        uint8_t* out = block + y * columns;
        for (int64_t x = 0; x < columns; ++x) out[x] = uint8_t(table[size_t(x)] / divisor);
        const uint8_t* leaving = t + Wrap(y - radius, rows) * columns;
        const uint8_t* entering = t + Wrap(y + radius + 1, rows) * columns;
        for (int64_t x = 0; x < columns; ++x) table[size_t(x)] += int64_t(entering[x]) - leaving[x];
    }
    return true;
}
