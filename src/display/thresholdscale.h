#pragma once

// Where the threshold lines of a smoke-level bar graph stand: as a vertical position in
// twips from the top of the window, the unit in which the logic places them. The bar's zero
// line lies at kBarZeroTwips and its full height, 100 %, spans 4980 twips upwards.
namespace thresholdscale {

constexpr int kBarZeroTwips = 5855;
constexpr double kTwipsPerPercent = 49.8;

// The position of a threshold of `percent` of the bar.
constexpr double percentToTwips(double percent) {
    return kBarZeroTwips - percent * kTwipsPerPercent;
}

// The percentage of the bar at which a line placed at `twips` stands.
constexpr double twipsToPercent(double twips) {
    return (kBarZeroTwips - twips) / kTwipsPerPercent;
}

} // namespace thresholdscale
