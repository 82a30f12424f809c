#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace tarnwick {

/// How loud samples are, after ITU-R BS.1770-4: weighted as head and ear do, averaged over blocks of 0.4 s
/// that are loud enough to count.
class Loudness {
public:
    static constexpr double silence = -120.0; ///< LUFS.

    /// LUFS of interleaved samples from -1 to 1.
    static double integrated(const std::vector<float>& samples, std::size_t channels, double rate) {
        const std::size_t frames = samples.size() / channels;
        std::vector<double> squares(frames);
        for (std::size_t channel = 0; channel < channels; ++channel) {
            Filter shelf = highShelf(rate);
            Filter highPass = lowCut(rate);
            for (std::size_t i = 0; i < frames; ++i) {
                const double weighted = highPass(shelf(samples[i * channels + channel]));
                squares[i] += weighted * weighted;
            }
        }
        return gated(blocksOf(squares, rate));
    }
    /// The share of the power that lies above `frequency`, 0 to 1, of one channel.
    static double shareAbove(const std::vector<float>& samples, double rate, double frequency) {
        Filter first = highPass(rate, frequency, 0.54119610);
        Filter second =
            highPass(rate, frequency, 1.3065630); // with the first a Butterworth of the fourth order
        double above = 0.0;
        double all = 0.0;
        for (const float sample : samples) {
            const double high = second(first(sample));
            above += high * high;
            all += static_cast<double>(sample) * static_cast<double>(sample);
        }
        return above / all;
    }

private:
    static constexpr double blockSeconds = 0.4;
    static constexpr double stepSeconds = 0.1;
    static constexpr double absoluteGate = -70.0; ///< LUFS: a block below is silence.
    static constexpr double relativeGate = 10.0;  ///< LU below the mean of all blocks.

    /// A filter of the second order.
    struct Filter {
        double b0, b1, b2, a1, a2;
        double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;

        double operator()(double x) {
            const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
            x2 = x1;
            x1 = x;
            y2 = y1;
            y1 = y;
            return y;
        }
    };

    /// The two filters of the standard, which states them at 48 kHz, by the analogue ones that they stand
    /// for.
    static Filter highShelf(double rate) {
        const double k = std::tan(std::numbers::pi * 1681.974450955533 / rate);
        const double q = 0.7071752369554196;
        const double high = std::pow(10.0, 3.999843853973347 / 20.0);
        const double band = std::pow(high, 0.4996667741545416);
        const double a0 = 1.0 + k / q + k * k;
        return {(high + band * k / q + k * k) / a0, 2.0 * (k * k - high) / a0,
                (high - band * k / q + k * k) / a0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    }
    static Filter lowCut(double rate) {
        const double k = std::tan(std::numbers::pi * 38.13547087602444 / rate);
        const double q = 0.5003270373238773;
        const double a0 = 1.0 + k / q + k * k;
        return {1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    }
    static Filter highPass(double rate, double frequency, double q) {
        const double k = std::tan(std::numbers::pi * frequency / rate);
        const double a0 = 1.0 + k / q + k * k;
        return {1.0 / a0, -2.0 / a0, 1.0 / a0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    }

    /// Mean squares of the blocks; one over everything if it is shorter than a block.
    static std::vector<double> blocksOf(const std::vector<double>& squares, double rate) {
        const std::size_t length = std::min(squares.size(), static_cast<std::size_t>(blockSeconds * rate));
        const auto step = static_cast<std::size_t>(stepSeconds * rate);
        std::vector<double> blocks;
        for (std::size_t start = 0; start + length <= squares.size(); start += step) {
            double sum = 0.0;
            for (std::size_t i = start; i < start + length; ++i) {
                sum += squares[i];
            }
            blocks.push_back(sum / static_cast<double>(length));
        }
        return blocks;
    }
    static double level(double square) { return -0.691 + 10.0 * std::log10(square + 1e-15); }
    /// The level of those blocks that are not below `gate`.
    static double mean(const std::vector<double>& blocks, double gate) {
        double sum = 0.0;
        std::size_t count = 0;
        for (const double block : blocks) {
            if (level(block) > gate) {
                sum += block;
                ++count;
            }
        }
        return count == 0 ? silence : level(sum / static_cast<double>(count));
    }
    static double gated(const std::vector<double>& blocks) {
        return mean(blocks, std::max(absoluteGate, mean(blocks, absoluteGate) - relativeGate));
    }
};

} // namespace tarnwick
