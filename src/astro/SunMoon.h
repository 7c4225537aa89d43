#pragma once

// The short series for the sun and the moon from O. Montenbruck and T. Pfleger, "Astronomy on the
// Personal Computer": good to about 1 (sun) and 5 (moon) arc minutes for some centuries around 2000.
namespace Tarno::mRiseSet
{

/// A place in the sky, referred to the equator and equinox of the day.
struct Equatorial {
    double ra = 0;  ///< right ascension in hours, 0 to 24
    double dec = 0; ///< declination in degrees
};

/// The sun `t` Julian centuries after J2000.
Equatorial MiniSun(double t);

/// The moon `t` Julian centuries after J2000, as seen from the centre of the earth.
Equatorial MiniMoon(double t);

} // namespace Tarno::mRiseSet
