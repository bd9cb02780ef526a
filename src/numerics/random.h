// The library's random numbers: the n-th number of a run is a pure function of the seed and of n.
//
// One sequence serves the process. RandNum() and the solver's guesses take its next number; pick_random() reads any
// position without moving it.
#pragma once

#include <cstdint>

namespace qx {

/// The seed of the sequence until another is set.
inline constexpr std::int32_t default_seed = 3167;

/// Starts the sequence of a seed at its first number and forgets a saved normal deviate. A seed and its negative are
/// one sequence; 0 starts the present sequence anew.
void seed_random(std::int32_t seed);

/// The next uniform number, at least 0 and below 1, in steps of 2^-23.
double next_random();

/// The uniform number at a position of the sequence, which stays where it is. A negative position makes its magnitude
/// the seed of the sequence and gives that sequence's first number.
double pick_random(std::int32_t position);

/// The uniform number at a position of a seed's sequence, whatever the present one is.
double random_of(std::uint32_t seed, std::uint32_t position);
/// Half the step of the uniform numbers: added, it keeps them off 0.
inline constexpr double half_random_step = 0x1p-24;

/// The position of the number that next_random() will give, from 1.
std::int32_t random_position();

/// A standard normal deviate drawn by Marsaglia's polar method, which makes two at a time: the second is kept for the
/// next draw.
double draw_normal();
/// Replaces the deviate kept, so that the next draw makes a new pair.
void drop_saved_normal();

/// A pair of 32-bit words.
struct Words {
    std::uint32_t left, right;
    bool operator==(const Words&) const = default;
};

/// The second mask of the second round: the library's own, which differs from the published 0xE874F0C3 in its top
/// digit and stays so, because sequences must repeat from release to release.
inline constexpr std::uint32_t second_mask = 0x0874F0C3;

/// Four rounds of the pseudo-DES hash of Press, Teukolsky, Vetterling and Flannery.
Words psdes(Words words, std::uint32_t second_mask_of_round_2 = second_mask);

} // namespace qx
