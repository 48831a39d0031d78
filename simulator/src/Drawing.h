#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nexwire::simulator {

/// A picture of squares of 8 pixels, in the 16 colours of a palette of its own; as much as a drawing needs.
class Drawing {
public:
    /// @param width, height  pixels, from 1.
    Drawing(int width, int height);

    int Columns() const { return columns_; }
    int Rows() const { return rows_; }
    /// Paints squares, the last ones included; what lies outside is left out. @param colour  0 to 15.
    void Fill(int left, int top, int right, int bottom, std::uint8_t colour);

    std::string Jpeg() const; ///< Baseline, without sub-sampling.
    std::string Png() const;  ///< Indexed, not compressed.

private:
    std::uint8_t At(int column, int row) const
    {
        return squares_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                        static_cast<std::size_t>(column)];
    }

    int width_;
    int height_;
    int columns_;
    int rows_;
    std::vector<std::uint8_t> squares_;
};

/// Walls and rooms, always the same for a name.
Drawing DrawPlan(std::string_view name, int width, int height);
/// A stripe for each of the names, in the order given, always the same for the same names; dark without any.
Drawing DrawScreen(const std::vector<std::string>& names, int width, int height);

} // namespace nexwire::simulator
