#pragma once

#include "hosts/render/Render.h"

#include <string>
#include <vector>

namespace OV::Hosts::Render {

struct ResponsePoint {
    double hz;
    double decibels[2];  // left, right
};

// The magnitude response of the run's settings as the plug-in gives it: an impulse in both
// channels through a process of its own at `rate`, long enough for the latency and the
// longest ring, and its spectrum at log-spaced frequencies from 20 Hz to 20 kHz (24 a
// octave). Throws HostError.
std::vector<ResponsePoint> MeasureResponse(const RenderContext& context, float rate);

// As CSV with a header line: "hz,left_db,right_db". Throws HostError(BadOutput).
void WriteResponse(const std::vector<ResponsePoint>& response, const std::string& path, bool replace);

}  // namespace OV::Hosts::Render
