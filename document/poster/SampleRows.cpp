// SPDX-License-Identifier: MIT
#include "document/poster/SampleRows.h"

#include "pictures/StraightAlpha.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>

namespace orvane
{

namespace
{

/// The sum of a channel in the square that becomes the pixel whose first sample is \p in.
template <int samples, int bytes>
unsigned SumOf(const BYTE* in, std::size_t rowBytes)
{
    unsigned sum = 0;
    for (int y = 0; y < samples; ++y)
    {
        const BYTE* const line = in + rowBytes * static_cast<std::size_t>(y);
        for (int i = 0; i < samples; ++i)
        {
            sum += line[i * bytes];
        }
    }
    return sum;
}

/// The level of a channel whose samples have this sum, rounded to the nearest.
template <int samples, typename Channel>
Channel LevelOf(unsigned sum)
{
    constexpr unsigned step = std::numeric_limits<Channel>::max() / 255;  // of a sample's levels
    constexpr unsigned area = samples * samples;
    return static_cast<Channel>((2 * sum * step + area) / (2 * area));
}

template <int samples, int bytes>
void AverageRow(const SampleRows& rows, BYTE* out)
{
    const BYTE* in = rows.first;
    for (int x = 0; x < rows.width; ++x, in += samples * bytes, out += bytes)
    {
        for (int part = 0; part < bytes; ++part)
        {
            out[part] = LevelOf<samples, BYTE>(SumOf<samples, bytes>(in + part, rows.rowBytes));
        }
    }
}

template <typename Channel>
void Store(Channel value, BYTE* out)
{
    std::memcpy(out, &value, sizeof value);
}

template <int samples, typename Channel>
void OpaqueRow(const SampleRows& rows, BYTE* out)
{
    const BYTE* in = rows.first;
    for (int x = 0; x < rows.width; ++x, in += 3 * samples)
    {
        for (int part = 2; part >= 0; --part, out += sizeof(Channel))
        {
            Store(LevelOf<samples, Channel>(SumOf<samples, 3>(in + part, rows.rowBytes)), out);
        }
    }
}

template <int samples, typename Channel>
void TransparentRow(const SampleRows& rows, BYTE* out)
{
    constexpr unsigned whole = 255 * samples * samples;
    constexpr unsigned most = std::numeric_limits<Channel>::max();
    const BYTE* white = rows.first;
    const BYTE* black = rows.overBlack;
    for (int x = 0; x < rows.width; ++x, white += 3 * samples, black += 3 * samples)
    {
        // What is not covered is the difference between the drawings over white and black. Drawing
        // rounds each channel by itself, so the three differences are averaged.
        std::array<unsigned, 3> colors{};
        unsigned uncovered = 0;
        for (std::size_t part = 0; part < 3; ++part)
        {
            colors[part] = SumOf<samples, 3>(black + part, rows.rowBytes);
            const unsigned overWhite = SumOf<samples, 3>(white + part, rows.rowBytes);
            uncovered += overWhite - std::min(colors[part], overWhite);
        }
        const unsigned alpha = whole - std::min((uncovered + 1) / 3, whole);
        for (std::size_t part = 3; part-- > 0; out += sizeof(Channel))
        {
            Store(static_cast<Channel>(StraightColor(colors[part], alpha, most)), out);
        }
        Store(LevelOf<samples, Channel>(alpha), out);
        out += sizeof(Channel);
    }
}

using RowMaker = void (*)(const SampleRows& rows, BYTE* out);

template <int samples>
RowMaker ChooseMaker(RowFormat format)
{
    if (format.kind == PixelKind::Rgba)
    {
        return format.channelBits == 16 ? TransparentRow<samples, std::uint16_t>
                                        : TransparentRow<samples, std::uint8_t>;
    }
    return format.channelBits == 16 ? OpaqueRow<samples, std::uint16_t>
                                    : OpaqueRow<samples, std::uint8_t>;
}

}  // namespace

void AverageBgr(const SampleRows& rows, int bytes, BYTE* out)
{
    constexpr RowMaker three[] = {AverageRow<1, 3>, AverageRow<2, 3>, AverageRow<3, 3>,
                                  AverageRow<4, 3>};
    constexpr RowMaker four[] = {AverageRow<1, 4>, AverageRow<2, 4>, AverageRow<3, 4>,
                                 AverageRow<4, 4>};
    (bytes == 4 ? four : three)[rows.samples - 1](rows, out);
}

void AverageTo(RowFormat format, const SampleRows& rows, BYTE* out)
{
    const RowMaker makers[] = {ChooseMaker<1>(format), ChooseMaker<2>(format),
                               ChooseMaker<3>(format), ChooseMaker<4>(format)};
    makers[rows.samples - 1](rows, out);
}

}  // namespace orvane
