#pragma once

namespace Tarno
{

// The unit in which reports, and a few distances in windows, are given.

constexpr int twipsPerInch = 1440;
constexpr int twipsPerPoint = 20;
constexpr int twipsPerPixel = 15; // device-independent pixels
constexpr double twipsPerMillimetre = twipsPerInch / 25.4;

/// Device-independent pixels, rounded, for a length in twips.
constexpr int FromTwips(int twips)
{
    return (twips + (twips < 0 ? -twipsPerPixel / 2 : twipsPerPixel / 2)) / twipsPerPixel;
}

} // namespace Tarno
