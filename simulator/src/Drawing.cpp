#include "src/Drawing.h"

#include <boost/crc.hpp>

#include <algorithm>
#include <array>
#include <random>

namespace nexwire::simulator {
namespace {

constexpr int kSquare = 8;

struct Colour {
    std::uint8_t red, green, blue;
};

constexpr std::array<Colour, 16> kPalette = {{{24, 26, 32},
                                              {250, 250, 246},
                                              {70, 74, 84},
                                              {226, 222, 210},
                                              {198, 60, 52},
                                              {232, 140, 48},
                                              {240, 204, 72},
                                              {110, 168, 80},
                                              {40, 116, 96},
                                              {72, 170, 190},
                                              {52, 106, 180},
                                              {42, 56, 120},
                                              {126, 84, 160},
                                              {204, 108, 150},
                                              {140, 104, 76},
                                              {160, 164, 170}}};
constexpr std::uint8_t kDark = 0;
constexpr std::uint8_t kPaper = 1;
constexpr std::uint8_t kWall = 2;
constexpr std::uint8_t kDoor = 5;

std::string Bytes(std::initializer_list<int> values)
{
    std::string bytes;
    for (const int value : values) {
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// Big-endian, `count` bytes.
std::string Number(std::uint32_t number, int count)
{
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> static_cast<unsigned>(shift) & 255u);
    }
    return bytes;
}

// ---- JPEG ----

/// Every square has one colour, so of its 64 coefficients only the first is not 0.
class Scan {
public:
    void Add(int difference)
    {
        // Lengths 2, 3, 3, 3, 3, 3, 4, 5, 6 ... as the table in the head says.
        static constexpr std::array<std::pair<unsigned, unsigned>, 12> kCodes = {{{0b00, 2},
                                                                                  {0b010, 3},
                                                                                  {0b011, 3},
                                                                                  {0b100, 3},
                                                                                  {0b101, 3},
                                                                                  {0b110, 3},
                                                                                  {0b1110, 4},
                                                                                  {0b11110, 5},
                                                                                  {0b111110, 6},
                                                                                  {0b1111110, 7},
                                                                                  {0b11111110, 8},
                                                                                  {0b111111110, 9}}};
        unsigned size = 0;
        while (std::abs(difference) >> size != 0) {
            ++size;
        }
        Put(kCodes[size].first, kCodes[size].second);
        Put(static_cast<unsigned>(difference < 0 ? difference + (1 << size) - 1 : difference), size);
        Put(0, 1); // No more coefficients.
    }

    std::string Take()
    {
        Put(127, 7); // Fills the last byte with ones; what is left over is dropped.
        return std::move(bytes_);
    }

private:
    void Put(unsigned bits, unsigned count)
    {
        while (count-- > 0) {
            byte_ = byte_ << 1u | (bits >> count & 1u);
            if (++filled_ == 8) {
                bytes_ += static_cast<char>(byte_);
                if (byte_ == 255) {
                    bytes_ += '\0';
                }
                byte_ = 0;
                filled_ = 0;
            }
        }
    }

    std::string bytes_;
    unsigned byte_ = 0;
    int filled_ = 0;
};

/// Luminance and the two differences, each around 0.
std::array<int, 3> Levels(const Colour& colour)
{
    const double red = colour.red;
    const double green = colour.green;
    const double blue = colour.blue;
    return {static_cast<int>(0.299 * red + 0.587 * green + 0.114 * blue) - 128,
            static_cast<int>(-0.1687 * red - 0.3313 * green + 0.5 * blue),
            static_cast<int>(0.5 * red - 0.4187 * green - 0.0813 * blue)};
}

std::string Segment(int marker, const std::string& content)
{
    return Bytes({255, marker}) + Number(static_cast<std::uint32_t>(content.size() + 2), 2) + content;
}

// ---- PNG ----

std::string Chunk(const std::string& kind, const std::string& content)
{
    boost::crc_32_type sum;
    const std::string summed = kind + content;
    sum.process_bytes(summed.data(), summed.size());
    return Number(static_cast<std::uint32_t>(content.size()), 4) + summed + Number(sum.checksum(), 4);
}

std::string Stored(const std::string& data)
{
    constexpr std::size_t kMost = 65535;
    std::string packed = Bytes({0x78, 0x01});
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (std::size_t at = 0; at < data.size(); at += kMost) {
        const std::size_t size = std::min(kMost, data.size() - at);
        const auto least = static_cast<int>(size & 255u);
        const auto most = static_cast<int>(size >> 8u);
        packed += Bytes({at + size == data.size() ? 1 : 0, least, most, 255 - least, 255 - most});
        packed.append(data, at, size);
    }
    for (const char each : data) {
        low = (low + static_cast<unsigned char>(each)) % 65521;
        high = (high + low) % 65521;
    }
    return packed + Number(high << 16u | low, 4);
}

/// The same numbers for the same name, on every machine.
std::minstd_rand Draws(std::string_view name)
{
    std::uint32_t seed = 2166136261u;
    for (const char each : name) {
        seed = (seed ^ static_cast<unsigned char>(each)) * 16777619u;
    }
    return std::minstd_rand(seed);
}

void DivideRooms(Drawing& plan, std::minstd_rand& draw, int left, int top, int right, int bottom)
{
    const int width = right - left;
    const int height = bottom - top;
    const int longer = std::max(width, height);
    if (longer < 24) {
        return;
    }
    const int at = longer / 3 + static_cast<int>(draw() % static_cast<unsigned>(longer / 3));
    const bool across = width >= height;
    const int door = 2 + static_cast<int>(draw() % static_cast<unsigned>(std::max((across ? height : width) - 6, 1)));
    if (across) {
        plan.Fill(left + at, top, left + at, bottom, kWall);
        plan.Fill(left + at, top + door, left + at, top + door + 2, kDoor);
        DivideRooms(plan, draw, left, top, left + at, bottom);
        DivideRooms(plan, draw, left + at, top, right, bottom);
    } else {
        plan.Fill(left, top + at, right, top + at, kWall);
        plan.Fill(left + door, top + at, left + door + 2, top + at, kDoor);
        DivideRooms(plan, draw, left, top, right, top + at);
        DivideRooms(plan, draw, left, top + at, right, bottom);
    }
}

} // namespace

Drawing::Drawing(int width, int height)
    : width_(width), height_(height), columns_((width + kSquare - 1) / kSquare),
      rows_((height + kSquare - 1) / kSquare),
      squares_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), kDark)
{
}

void Drawing::Fill(int left, int top, int right, int bottom, std::uint8_t colour)
{
    for (int row = std::max(top, 0); row <= std::min(bottom, rows_ - 1); ++row) {
        for (int column = std::max(left, 0); column <= std::min(right, columns_ - 1); ++column) {
            squares_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                     static_cast<std::size_t>(column)] = colour;
        }
    }
}

std::string Drawing::Jpeg() const
{
    // Divisors of 8 leave the first coefficient of a square at the level of its pixels.
    std::string file = Bytes({255, 0xD8}) + Segment(0xE0, "JFIF" + Bytes({0, 1, 1, 0, 0, 1, 0, 1, 0, 0})) +
                       Segment(0xDB, Bytes({0}) + std::string(64, '\x08'));
    file += Segment(0xC0, Bytes({8}) + Number(static_cast<std::uint32_t>(height_), 2) +
                              Number(static_cast<std::uint32_t>(width_), 2) +
                              Bytes({3, 1, 0x11, 0, 2, 0x11, 0, 3, 0x11, 0}));
    file += Segment(0xC4, Bytes({0x00, 0, 1, 5, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0}) +
                              Bytes({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    file += Segment(0xC4, Bytes({0x10, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    file += Segment(0xDA, Bytes({3, 1, 0, 2, 0, 3, 0, 0, 63, 0}));
    Scan scan;
    std::array<int, 3> before = {0, 0, 0};
    for (int row = 0; row < rows_; ++row) {
        for (int column = 0; column < columns_; ++column) {
            const std::array<int, 3> levels = Levels(kPalette[At(column, row)]);
            for (std::size_t i = 0; i < levels.size(); ++i) {
                scan.Add(levels[i] - before[i]);
            }
            before = levels;
        }
    }
    return file + scan.Take() + Bytes({255, 0xD9});
}

std::string Drawing::Png() const
{
    std::string palette;
    for (const Colour& colour : kPalette) {
        palette += Bytes({colour.red, colour.green, colour.blue});
    }
    std::string lines;
    for (int row = 0; row < rows_; ++row) {
        std::string line(1, '\0'); // Each line begins with its filter, none.
        for (int column = 0; column < columns_; ++column) {
            line.append(kSquare / 2, static_cast<char>(At(column, row) * 17));
        }
        line.resize(1 + (static_cast<std::size_t>(width_) + 1) / 2);
        for (int y = row * kSquare; y < std::min(height_, (row + 1) * kSquare); ++y) {
            lines += line;
        }
    }
    return "\x89PNG\r\n\x1A\n" +
           Chunk("IHDR", Number(static_cast<std::uint32_t>(width_), 4) +
                             Number(static_cast<std::uint32_t>(height_), 4) + Bytes({4, 3, 0, 0, 0})) +
           Chunk("PLTE", palette) + Chunk("IDAT", Stored(lines)) + Chunk("IEND", "");
}

Drawing DrawPlan(std::string_view name, int width, int height)
{
    Drawing plan(width, height);
    std::minstd_rand draw = Draws(name);
    const int right = plan.Columns() - 3;
    const int bottom = plan.Rows() - 3;
    plan.Fill(0, 0, plan.Columns(), plan.Rows(), kPaper);
    plan.Fill(2, 2, right, bottom, kWall);
    plan.Fill(3, 3, right - 1, bottom - 1, kPaper);
    DivideRooms(plan, draw, 3, 3, right - 1, bottom - 1);
    return plan;
}

Drawing DrawScreen(const std::vector<std::string>& names, int width, int height)
{
    Drawing screen(width, height);
    const int count = static_cast<int>(names.size());
    for (int i = 0; i < count; ++i) {
        std::minstd_rand draw = Draws(names[static_cast<std::size_t>(i)]);
        const int left = screen.Columns() * i / count;
        const int right = screen.Columns() * (i + 1) / count - 1;
        screen.Fill(left, 0, right, screen.Rows(), static_cast<std::uint8_t>(3 + draw() % 13));
        for (int spot = 0; spot < 12; ++spot) {
            const int x = left + static_cast<int>(draw() % static_cast<unsigned>(std::max(right - left + 1, 1)));
            const int y = static_cast<int>(draw() % static_cast<unsigned>(screen.Rows()));
            const int size = 1 + static_cast<int>(draw() % 6);
            screen.Fill(x, y, std::min(x + size, right), y + size, static_cast<std::uint8_t>(1 + draw() % 15));
        }
    }
    return screen;
}

} // namespace nexwire::simulator
