#pragma once

// Short series for the positions of sun and moon from O. Montenbruck and T. Pfleger, "Astronomy on the
// Personal Computer": accurate to about 1 (sun) and 5 (moon) arc minutes for some centuries around 2000.
namespace Tarno::mRiseSet
{

/// A position in the sky, referred to the equator and equinox of date.
struct Equatorial {
    double ra = 0;  ///< right ascension in hours, 0 to 24
    double dec = 0; ///< declination in degrees
};

/// Returns the position of the sun `t` Julian centuries after J2000.
Equatorial MiniSun(double t);

/// Returns the geocentric position of the moon `t` Julian centuries after J2000.
Equatorial MiniMoon(double t);

} // namespace Tarno::mRiseSet
