// node year.mjs FOLDER
//
// Measures a year of forecasts at Sydney with two JavaScript libraries that are installed in FOLDER. Prints a line for
// each: its name, its version and the milliseconds of the fastest of five years.

import {createRequire} from "node:module";
import path from "node:path";

const folder = path.resolve(process.argv[2]);
const require = createRequire(path.join(folder, "package.json"));
const SunCalc = require("suncalc");
const Astronomy = require("astronomy-engine");
const latitude = -33.8;
const longitude = 151.25;
const observer = new Astronomy.Observer(latitude, longitude, 0);
const midnight = day => new Date(Date.UTC(2026, 0, day, -10));

function daySunCalc(day) {
    const date = midnight(day);
    const noon = new Date(date.getTime() + 43200000);
    return [SunCalc.getTimes(noon, latitude, longitude), SunCalc.getMoonTimes(date, latitude, longitude),
            SunCalc.getMoonIllumination(noon)];
}

function dayAstronomy(day) {
    const date = midnight(day);
    const events = [];
    for (const body of [Astronomy.Body.Sun, Astronomy.Body.Moon]) {
        for (const direction of [1, -1]) {
            events.push(Astronomy.SearchRiseSet(body, observer, direction, date, 1));
        }
    }
    return [events, Astronomy.MoonPhase(date), Astronomy.Illumination(Astronomy.Body.Moon, date)];
}

function fastestYear(calculate) {
    const times = [];
    for (let year = 0; year < 5; ++year) {
        const start = performance.now();
        for (let day = 1; day <= 365; ++day) {
            calculate(day);
        }
        times.push(performance.now() - start);
    }
    return Math.min(...times).toFixed(1);
}

for (const [name, calculate] of [["suncalc", daySunCalc], ["astronomy-engine", dayAstronomy]]) {
    const manifest = require(path.join(folder, "node_modules", name, "package.json"));
    console.log(`${name}\t${manifest.version}\t${fastestYear(calculate)}`);
}
