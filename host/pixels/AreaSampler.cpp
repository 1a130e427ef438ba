#include "host/pixels/AreaSampler.h"

#include "host/pixels/PixelWorld.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstring>

namespace host {

namespace {

// floor(value / 65536) for any sign, without overflow for the whole PF_Fixed range.
std::int64_t floorPixel(std::int64_t fixed) {
    return fixed >= 0 ? fixed / 65536 : -((-fixed + 65535) / 65536);
}

bool insideWorld(const PF_EffectWorld& world, std::int64_t x, std::int64_t y) {
    return world.data && x >= 0 && y >= 0 && x < world.width && y < world.height;
}

}  // namespace

AreaSampler::AreaSampler(const PF_EffectWorld& world, PF_PixelFormat format)
    : format_(format), snap_noise_(format == PF_PixelFormat_ARGB128) {
    if (!world.data || world.width <= 0 || world.height <= 0) return;
    width_ = world.width;
    height_ = world.height;
    dispatchPixelType(format, [&](auto tag) { buildTable<typename decltype(tag)::type>(world); });
    if (snap_noise_) noise_ = (width_ + height_ + 4) * DBL_EPSILON;
    exact_ = !snap_noise_ && tableIsExact();
}

bool AreaSampler::tableIsExact() const {
    // Integer pixels add non-negative integers, and rounding never makes a sum smaller, so
    // when the grand totals are at most 2^53 every partial sum was at most that and exact.
    constexpr double kLargestExact = 9007199254740992.0;  // 2^53
    const Sums& all = table_.back();
    return all.alpha <= kLargestExact && all.red <= kLargestExact && all.green <= kLargestExact &&
           all.blue <= kLargestExact;
}

template <class Pixel>
void AreaSampler::buildTable(const PF_EffectWorld& world) {
    const std::size_t stride = static_cast<std::size_t>(width_) + 1;
    table_.assign(stride * (static_cast<std::size_t>(height_) + 1), Sums{0.0, 0.0, 0.0, 0.0});
    for (A_long j = 0; j < height_; ++j) {
        const Pixel* row = worldRow<Pixel>(world, j);
        const Sums* above = &table_[static_cast<std::size_t>(j) * stride];
        Sums* here = &table_[static_cast<std::size_t>(j + 1) * stride];
        Sums run{0.0, 0.0, 0.0, 0.0};
        for (A_long i = 0; i < width_; ++i) {
            const double a = row[i].alpha;
            run.alpha += a;
            run.red += a * row[i].red;
            run.green += a * row[i].green;
            run.blue += a * row[i].blue;
            here[i + 1] = Sums{above[i + 1].alpha + run.alpha, above[i + 1].red + run.red,
                               above[i + 1].green + run.green, above[i + 1].blue + run.blue};
        }
    }
}

int AreaSampler::splitAxis(double lo, double hi, A_long count, Span spans[3]) {
    // Outside the world counts as transparent, so clip the box to the covered pixels.
    lo = std::max(lo, -0.5);
    hi = std::min(hi, count - 0.5);
    if (!(hi > lo)) return 0;
    // The pixel whose square holds lo (an edge on a boundary starts the next pixel), and the
    // one whose square holds hi (an edge on a boundary ends the previous pixel). Both edges
    // now lie in [-1/2, count - 1/2], so lo + 1/2 and hi + 1/2 are non-negative and small:
    // truncation gives their floor, and one more where hi + 1/2 has a fraction, its ceiling.
    const A_long first = std::min<A_long>(static_cast<A_long>(lo + 0.5), count - 1);
    const double hi_edge = hi + 0.5;
    const A_long hi_floor = static_cast<A_long>(hi_edge);
    const A_long hi_ceil = hi_floor + (static_cast<double>(hi_floor) < hi_edge ? 1 : 0);
    const A_long last = std::max<A_long>(hi_ceil - 1, first);
    if (first == last) {
        spans[0] = Span{first, first, hi - lo};
        return 1;
    }
    int n = 0;
    spans[n++] = Span{first, first, (first + 0.5) - lo};
    if (last - first >= 2) spans[n++] = Span{first + 1, last - 1, 1.0};
    spans[n++] = Span{last, last, hi - (last - 0.5)};
    return n;
}

namespace {

// Two channels side by side. A table entry is two such pairs (alpha and red, green and blue),
// and every operation on a pair is the operation on each channel alone, with the same
// rounding: the general path gives the same bits in half the instructions.
using Pair = double __attribute__((vector_size(16)));
using PairBits = long long __attribute__((vector_size(16)));

// The two pairs of a table entry (four doubles: alpha, red, green, blue).
struct EntryPairs {
    Pair alpha_red;
    Pair green_blue;
};
template <class Entry>
inline EntryPairs pairsOf(const Entry& entry) {
    static_assert(sizeof(Entry) == sizeof(EntryPairs), "four doubles");
    EntryPairs pairs;
    std::memcpy(&pairs, &entry, sizeof pairs);
    return pairs;
}

// |v| per channel: the sign bit cleared, as std::fabs does.
inline Pair absolute(Pair v) {
    return reinterpret_cast<Pair>(reinterpret_cast<PairBits>(v) & ~PairBits{LLONG_MIN, LLONG_MIN});
}

// Sum over one block from its four table corners (top-left, top-right, bottom-left,
// bottom-right). With integer sources every term is an integer and the sum is exact.
inline Pair blockSum(Pair v00, Pair v01, Pair v10, Pair v11) { return v11 - v10 - v01 + v00; }

// The same for float sources, whose tables carry rounding noise: a sum within `noise`
// (relative) of the corners' magnitude is taken as zero.
inline Pair blockSumSnapped(Pair v00, Pair v01, Pair v10, Pair v11, double noise) {
    const Pair sum = blockSum(v00, v01, v10, v11);
    const Pair magnitude = absolute(v00) + absolute(v01) + absolute(v10) + absolute(v11);
    const PairBits within_noise = absolute(sum) <= noise * magnitude;
    return reinterpret_cast<Pair>(reinterpret_cast<PairBits>(sum) & ~within_noise);
}

}  // namespace

template <bool kSnapNoise>
AreaSampler::Sums AreaSampler::weightedBlocks(const Span* xs, int nx, const Span* ys, int ny) const {
    // Rounding noise of a table entry, relative to its magnitude (float sources only).
    const double noise = noise_;
    auto sum = [noise](Pair v00, Pair v01, Pair v10, Pair v11) {
        return kSnapNoise ? blockSumSnapped(v00, v01, v10, v11, noise) : blockSum(v00, v01, v10, v11);
    };
    // Blocks in row-major order, each weighted by its overlap; the order fixes the rounding.
    Pair alpha_red{0.0, 0.0};
    Pair green_blue{0.0, 0.0};
    for (int b = 0; b < ny; ++b) {
        const Sums* top = &corner(0, ys[b].first);
        const Sums* bottom = &corner(0, ys[b].last + 1);
        for (int a = 0; a < nx; ++a) {
            const EntryPairs v00 = pairsOf(top[xs[a].first]);
            const EntryPairs v01 = pairsOf(top[xs[a].last + 1]);
            const EntryPairs v10 = pairsOf(bottom[xs[a].first]);
            const EntryPairs v11 = pairsOf(bottom[xs[a].last + 1]);
            const double w = xs[a].weight * ys[b].weight;
            alpha_red += w * sum(v00.alpha_red, v01.alpha_red, v10.alpha_red, v11.alpha_red);
            green_blue += w * sum(v00.green_blue, v01.green_blue, v10.green_blue, v11.green_blue);
        }
    }
    return Sums{alpha_red[0], alpha_red[1], green_blue[0], green_blue[1]};
}

template <int kColumns, int kRows>
AreaSampler::Sums AreaSampler::weightedBlocksExact(const Span* xs, const Span* ys) const {
    // The spans tile the box, so neighbouring blocks share their edges: kColumns + 1 column
    // edges and kRows + 1 row edges. Every difference of exact integers up to 2^53 is exact,
    // so (v11 - v01) - (v10 - v00) equals the block sum the general path forms; the weighted
    // sums are then added in the same row-major order, giving the same bits.
    A_long edges[kColumns + 1];
    for (int a = 0; a < kColumns; ++a) edges[a] = xs[a].first;
    edges[kColumns] = xs[kColumns - 1].last + 1;
    Sums upper[kColumns + 1];  // the table at each column edge, on the block row's top
    const Sums* row = &corner(0, ys[0].first);
    for (int e = 0; e <= kColumns; ++e) upper[e] = row[edges[e]];
    Sums total{0.0, 0.0, 0.0, 0.0};
    for (int b = 0; b < kRows; ++b) {
        row = &corner(0, ys[b].last + 1);
        Sums column[kColumns + 1];  // sums down the block row, left of each column edge
        for (int e = 0; e <= kColumns; ++e) {
            const Sums lower = row[edges[e]];
            column[e] = lower - upper[e];
            upper[e] = lower;
        }
        for (int a = 0; a < kColumns; ++a) {
            const double w = xs[a].weight * ys[b].weight;
            const Sums block = column[a + 1] - column[a];
            total.alpha += w * block.alpha;
            total.red += w * block.red;
            total.green += w * block.green;
            total.blue += w * block.blue;
        }
    }
    return total;
}

template <int kColumns>
AreaSampler::Sums AreaSampler::weightedBlocksExact(const Span* xs, const Span* ys, int ny) const {
    if (ny == 3) return weightedBlocksExact<kColumns, 3>(xs, ys);
    if (ny == 2) return weightedBlocksExact<kColumns, 2>(xs, ys);
    return weightedBlocksExact<kColumns, 1>(xs, ys);
}

inline AreaSampler::Sums AreaSampler::weightedSums(const Span* xs, int nx, const Span* ys, int ny) const {
    if (exact_) {
        if (nx == 3) return weightedBlocksExact<3>(xs, ys, ny);
        if (nx == 2) return weightedBlocksExact<2>(xs, ys, ny);
        return weightedBlocksExact<1>(xs, ys, ny);
    }
    return snap_noise_ ? weightedBlocks<true>(xs, nx, ys, ny) : weightedBlocks<false>(xs, nx, ys, ny);
}

ChannelSample AreaSampler::boxAverage(double cx, double cy, double rx, double ry) const {
    if (table_.empty() || !(rx > 0.0) || !(ry > 0.0)) return ChannelSample{};
    Span xs[3];
    Span ys[3];
    const int nx = splitAxis(cx - rx, cx + rx, width_, xs);
    const int ny = nx ? splitAxis(cy - ry, cy + ry, height_, ys) : 0;
    if (nx == 0 || ny == 0) return ChannelSample{};

    // The spans tile the box, so block (a, b) runs from the table entry at its own first
    // pixel to the one past its last pixel.
    const Sums total = weightedSums(xs, nx, ys, ny);

    ChannelSample out;
    out.alpha = total.alpha / (4.0 * rx * ry);
    if (total.alpha != 0.0) {
        out.red = total.red / total.alpha;
        out.green = total.green / total.alpha;
        out.blue = total.blue / total.alpha;
    }
    return out;
}

template <class Pixel>
Pixel nearestSample(const PF_EffectWorld& world, PF_Fixed x, PF_Fixed y) {
    const std::int64_t i = floorPixel(static_cast<std::int64_t>(x) + 32768);
    const std::int64_t j = floorPixel(static_cast<std::int64_t>(y) + 32768);
    if (!insideWorld(world, i, j)) return Pixel{};
    return worldPixel<Pixel>(world, static_cast<A_long>(i), static_cast<A_long>(j));
}

template <class Pixel>
Pixel bilinearSample(const PF_EffectWorld& world, PF_Fixed x, PF_Fixed y) {
    const std::int64_t i = floorPixel(x);
    const std::int64_t j = floorPixel(y);
    const double fx = static_cast<double>(static_cast<std::int64_t>(x) - i * 65536) / 65536.0;
    const double fy = static_cast<double>(static_cast<std::int64_t>(y) - j * 65536) / 65536.0;
    double alpha = 0.0, red = 0.0, green = 0.0, blue = 0.0;
    for (int dj = 0; dj < 2; ++dj) {
        for (int di = 0; di < 2; ++di) {
            if (!insideWorld(world, i + di, j + dj)) continue;
            const Pixel& p = worldPixel<Pixel>(world, static_cast<A_long>(i + di), static_cast<A_long>(j + dj));
            const double wa = (di ? fx : 1.0 - fx) * (dj ? fy : 1.0 - fy) * p.alpha;
            alpha += wa;
            red += wa * p.red;
            green += wa * p.green;
            blue += wa * p.blue;
        }
    }
    ChannelSample out;
    out.alpha = alpha;
    if (alpha != 0.0) {
        out.red = red / alpha;
        out.green = green / alpha;
        out.blue = blue / alpha;
    }
    return roundToPixel<Pixel>(out);
}

template PF_Pixel nearestSample<PF_Pixel>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);
template PF_Pixel16 nearestSample<PF_Pixel16>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);
template PF_PixelFloat nearestSample<PF_PixelFloat>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);
template PF_Pixel bilinearSample<PF_Pixel>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);
template PF_Pixel16 bilinearSample<PF_Pixel16>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);
template PF_PixelFloat bilinearSample<PF_PixelFloat>(const PF_EffectWorld&, PF_Fixed, PF_Fixed);

}  // namespace host
