#include "numerics/random.h"
#include "core/utilities.h"

#include <bit>
#include <cmath>

namespace qx {

namespace {

std::int32_t idum = 1;              // position of the next number
std::uint32_t idums = default_seed; // seed of the sequence
double saved_normal = 0.0;
bool normal_is_saved = false;

std::uint32_t magnitude(std::int32_t number) {
    const auto bits = static_cast<std::uint32_t>(number);
    return number < 0 ? 0U - bits : bits;
}

// The number at a position, which moves on by one.
double uniform(std::int32_t& position) {
    if (position < 0) {
        idums = magnitude(position);
        position = 1;
    }
    const double number = random_of(idums, static_cast<std::uint32_t>(position));
    position = static_cast<std::int32_t>(static_cast<std::uint32_t>(position) + 1);
    return number;
}

} // namespace

Words psdes(Words words, std::uint32_t second_mask_of_round_2) {
    constexpr std::uint32_t c1[] = {0xBAA96887, 0x1E17D32C, 0x03BCDC3C, 0x0F33D1B2};
    const std::uint32_t c2[] = {0x4B0F3B58, second_mask_of_round_2, 0x6955C5A6, 0x55A7CA46};
    auto [lword, irword] = words;
    for (int i = 0; i < 4; ++i) {
        const std::uint32_t iswap = irword;
        const std::uint32_t ia = irword ^ c1[i];
        const std::uint32_t il = ia & 0xFFFF;
        const std::uint32_t ih = ia >> 16;
        const std::uint32_t ib = il * il + ~(ih * ih);
        irword = ((std::rotl(ib, 16) ^ c2[i]) + il * ih) ^ lword;
        lword = iswap;
    }
    return {lword, irword};
}

void seed_random(std::int32_t seed) {
    if (seed != 0) idums = magnitude(seed);
    idum = 1;
    drop_saved_normal();
}

double next_random() { return uniform(idum); }

double random_of(std::uint32_t seed, std::uint32_t position) {
    const std::uint32_t hash = psdes({seed, position}).right;
    return std::bit_cast<float>((hash & 0x007FFFFFU) | 0x3F800000U) - 1.0F;
}

double pick_random(std::int32_t position) { return uniform(position); }

std::int32_t random_position() { return idum; }

double draw_normal() {
    if (normal_is_saved) {
        normal_is_saved = false;
        return saved_normal;
    }
    double v1, v2, s;
    do {
        v1 = 2.0 * next_random() - 1.0;
        v2 = 2.0 * next_random() - 1.0;
        s = v1 * v1 + v2 * v2;
    } while (s >= 1.0 || iszero(s));
    const double f = std::sqrt(-2.0 * std::log(s) / s);
    saved_normal = v1 * f;
    normal_is_saved = true;
    return v2 * f;
}

void drop_saved_normal() { normal_is_saved = false; }

} // namespace qx
