#include "analysis/mean_error.h"

#include <cmath>

MeanErrorCurve computeMeanErrorCurve(Block block, double rayHeight, double lastMeasuredIndex) {
    MeanErrorCurve curve{};
    curve.lastMeasuredIndex = lastMeasuredIndex;
    // The index is read with the flat face towards the light: turned round,
    // the same block reads 1/n, and the error against n would only show that.
    block.direction = 1;
    const std::vector<double> incidences = measurementIncidences();
    curve.points.reserve(67);
    for (int radius = 14; radius <= 146; radius += 2) {
        block.radius = radius;
        const double n = block.index;
        double sum = 0.0;
        for (double incidence : incidences) {
            const RayTrace trace = traceRay(block, rayHeight, incidence);
            if (trace.measuredIndex) curve.lastMeasuredIndex = *trace.measuredIndex;
            const double deviation = curve.lastMeasuredIndex - n;
            sum += deviation * deviation;
        }
        double error = 100.0 * std::sqrt(sum / static_cast<double>(incidences.size())) / n;
        if (!std::isfinite(error)) error = 0.0;  // no true index to compare with
        curve.points.push_back({static_cast<double>(radius), error});
    }
    return curve;
}
