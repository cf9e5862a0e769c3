#pragma once

#include <cstddef>
#include <cstdint>

/// The records that a workbook's stream is made of: a kind, a length, a body of at most 8,224 bytes.
namespace tv::biff {

inline constexpr std::size_t maxBody = 8224;

enum class Kind : std::uint16_t {
    Formula = 0x0006,
    Eof = 0x000A,
    DateMode = 0x0022,
    FilePass = 0x002F,
    Font = 0x0031,
    Continue = 0x003C,
    Window1 = 0x003D,
    Pane = 0x0041,
    CodePage = 0x0042,
    ColInfo = 0x007D,
    BoundSheet = 0x0085,
    MulRk = 0x00BD,
    RString = 0x00D6,
    Xf = 0x00E0,
    Sst = 0x00FC,
    LabelSst = 0x00FD,
    ExtSst = 0x00FF,
    Dimensions = 0x0200,
    Number = 0x0203,
    Label = 0x0204,
    BoolErr = 0x0205,
    String = 0x0207,
    Row = 0x0208,
    Window2 = 0x023E,
    Rk = 0x027E,
    Style = 0x0293,
    Format = 0x041E,
    Selection = 0x001D,
    Bof = 0x0809,
};

inline constexpr std::uint16_t version8 = 0x0600;
inline constexpr std::uint16_t globalsStream = 0x0005;
inline constexpr std::uint16_t sheetStream = 0x0010;

/// In front of the characters of a string.
inline constexpr std::uint8_t wideFlag = 0x01; ///< Two bytes a character; one byte (ISO-8859-1) without it.
inline constexpr std::uint8_t phoneticFlag = 0x04;
inline constexpr std::uint8_t richFlag = 0x08;

} // namespace tv::biff
