#pragma once

// Band designs worked out from the textbook second-order forms (normalised by a0), and
// magnitudes evaluated from them or measured from impulse responses, all in double.
#include <cmath>
#include <complex>
#include <vector>

namespace OV::Testing {

enum OracleType { OracleHiPass = 0, OracleLowShelf = 1, OraclePeak = 2, OracleHiShelf = 3, OracleLowPass = 4 };

struct Section {
    double b0, b1, b2, a1, a2;
};

// The equaliser's pi is the single-precision one; it only places the frequency.
inline double DesignPi()
{
    return static_cast<double>(static_cast<float>(M_PI));
}

// The largest shelf slope for which the design's square root stays real.
inline double SlopeLimit(double A)
{
    // (A + 1/A)(1/S - 1) + 2 >= 0  <=>  1/S >= (A - 1)^2 / (A^2 + 1)
    return A == 1.0 ? INFINITY : (A * A + 1.0) / ((A - 1.0) * (A - 1.0));
}

// gainDb and q as the band sees them after any halving or doubling.
inline Section OracleSection(int type, double gainDb, double frequency, double q, double fs)
{
    const double w0 = 2.0 * DesignPi() * frequency / fs;
    const double cw = std::cos(w0);
    const double sw = std::sin(w0);
    const double A = std::pow(10.0, gainDb / 40.0);
    double b0, b1, b2, a0, a1, a2;
    if (type == OracleHiPass || type == OracleLowPass) {
        const double alpha = sw / (2.0 * q);
        const double sign = type == OracleHiPass ? 1.0 : -1.0;
        b0 = (1.0 + sign * cw) / 2.0;
        b1 = -sign * (1.0 + sign * cw);
        b2 = b0;
        a0 = 1.0 + alpha;
        a1 = -2.0 * cw;
        a2 = 1.0 - alpha;
    } else if (type == OraclePeak) {
        const double alpha = sw / (2.0 * q);
        b0 = 1.0 + alpha * A;
        b1 = -2.0 * cw;
        b2 = 1.0 - alpha * A;
        a0 = 1.0 + alpha / A;
        a1 = -2.0 * cw;
        a2 = 1.0 - alpha / A;
    } else {
        const double slope = std::min(q, SlopeLimit(A));
        const double alpha = sw / 2.0 * std::sqrt((A + 1.0 / A) * (1.0 / slope - 1.0) + 2.0);
        const double root = 2.0 * std::sqrt(A) * alpha;
        const double s = type == OracleLowShelf ? 1.0 : -1.0; // the high shelf mirrors cos
        b0 = A * ((A + 1) - s * (A - 1) * cw + root);
        b1 = s * 2 * A * ((A - 1) - s * (A + 1) * cw);
        b2 = A * ((A + 1) - s * (A - 1) * cw - root);
        a0 = (A + 1) + s * (A - 1) * cw + root;
        a1 = -s * 2 * ((A - 1) + s * (A + 1) * cw);
        a2 = (A + 1) + s * (A - 1) * cw - root;
    }
    return {b0 / a0, b1 / a0, b2 / a0, a1 / a0, a2 / a0};
}

inline double SectionMagnitude(const Section& k, double frequency, double fs)
{
    const std::complex<double> z1 = std::polar(1.0, -2.0 * M_PI * frequency / fs);
    const std::complex<double> z2 = z1 * z1;
    return std::abs((k.b0 + k.b1 * z1 + k.b2 * z2) / (1.0 + k.a1 * z1 + k.a2 * z2));
}

// |DFT| of a response at one frequency.
inline double MeasuredMagnitude(const std::vector<float>& response, double frequency, double fs)
{
    std::complex<double> sum = 0.0;
    const double w = -2.0 * M_PI * frequency / fs;
    for (std::size_t n = 0; n < response.size(); ++n)
        sum += static_cast<double>(response[n]) * std::polar(1.0, w * static_cast<double>(n));
    return std::abs(sum);
}

inline double Db(double magnitude)
{
    return 20.0 * std::log10(magnitude);
}

// Log-spaced frequencies from 20 Hz to 20 kHz.
inline std::vector<double> TestFrequencies(int count)
{
    std::vector<double> frequencies;
    for (int i = 0; i < count; ++i)
        frequencies.push_back(20.0 * std::pow(1000.0, static_cast<double>(i) / (count - 1)));
    return frequencies;
}

}  // namespace OV::Testing
