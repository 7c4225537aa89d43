#pragma once

/// Device-independent pixels, rounded, for a length in twips: there are 15 twips to a pixel.
constexpr int FromTwips(int twips)
{
    return (twips + (twips < 0 ? -7 : 7)) / 15;
}
