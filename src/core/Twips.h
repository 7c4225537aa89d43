#pragma once

namespace Tarno
{

// The unit of lengths in reports and of a few lengths in windows.

constexpr int twipsPerInch = 1440;
constexpr int twipsPerPoint = 20;
constexpr int twipsPerPixel = 15; // device-independent pixels
constexpr double twipsPerMillimetre = twipsPerInch / 25.4;

/// Converts twips to device-independent pixels, rounded.
constexpr int FromTwips(int twips)
{
    return (twips + (twips < 0 ? -twipsPerPixel / 2 : twipsPerPixel / 2)) / twipsPerPixel;
}

} // namespace Tarno
