// How the waypoint symbols look that are no plain shapes: a white pictogram or one or two letters on a coloured ground.
//
// A pictogram is a text on a grid of 16 by 16, y downwards: M and L x y, Q with a control point, Z as in SVG paths, O x
// y r a circle. S draws lines from there on, F fills again; K takes the colour of the ground, W the ink's again.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace ui::wx {

enum class Ground : std::uint8_t { Grey, Black, Red, Orange, Brown, Green, Teal, Blue, Violet, Yellow, Pink };

struct SymbolDrawing {
  std::int16_t code = 0;
  Ground ground = Ground::Grey;
  std::string_view letters = {};
  std::string_view pictogram = {};
};

inline constexpr std::string_view kAnchor =
    "S O8 4.3 1.4 M8 6 L8 13 M5.5 8 L10.5 8 M3.5 9.5 Q4 13 8 13 Q12 13 12.5 9.5";
inline constexpr std::string_view kFish = "M2.5 8 Q7 3 11 8 L13.5 5.5 L13.5 10.5 L11 8 Q7 13 2.5 8 Z";
inline constexpr std::string_view kRings = "O8 8 1.6 S O8 8 3.4 O8 8 5.6";
inline constexpr std::string_view kArrow = "S M3 8 L12 8 M8.5 4.5 L12.3 8 L8.5 11.5";
inline constexpr std::string_view kCar =
    "M2.5 8 L4 7.6 L5.5 4.5 L10.5 4.5 L12 7.6 L13.5 8 L13.5 11 L2.5 11 Z O5 11.3 1.7 O11 11.3 1.7 "
    "K M6.1 5.6 L9.9 5.6 L10.7 7.5 L5.3 7.5 Z";
inline constexpr std::string_view kTruck =
    "M2.5 4.5 L9 4.5 L9 11 L2.5 11 Z M9.6 6.5 L12 6.5 L13.8 9 L13.8 11 L9.6 11 Z O5 11.5 1.6 O11.7 11.5 1.6";
inline constexpr std::string_view kColumns =
    "M8 2.5 L13.5 6 L2.5 6 Z M3 12 L13 12 L13 13.5 L3 13.5 Z S M4.5 6 L4.5 12 M8 6 L8 12 M11.5 6 L11.5 12";
inline constexpr std::string_view kBag = "M4 6 L12 6 L13 13 L3 13 Z S M6 7 Q6 3 8 3 Q10 3 10 7";
inline constexpr std::string_view kRamp = "S M5 13.5 L5 2.5 M5 11 Q10.5 10 11.5 3";
inline constexpr std::string_view kSkier = "O10 3.8 1.5 S M8.7 6 L6 8.7 L9 10 L8 12 M3 10.5 L12.5 14 M9 6.5 L12 8.5";
inline constexpr std::string_view kStar =
    "M8 2.3 L9.5 6.3 L13.7 6.5 L10.4 9.1 L11.5 13.2 L8 10.9 L4.5 13.2 L5.6 9.1 L2.3 6.5 L6.5 6.3 Z";
inline constexpr std::string_view kHexagon = "S M5 3.5 L11 3.5 L13.7 8 L11 12.5 L5 12.5 L2.3 8 Z";

// By code.
// clang-format off
inline constexpr std::array kSigns{
    SymbolDrawing{0, Ground::Teal, "", kAnchor},
    SymbolDrawing{1, Ground::Orange, "",
                  "M8 3 Q11.5 3.5 11.5 8 L12.5 11 L3.5 11 L4.5 8 Q4.5 3.5 8 3 Z O8 12.3 1.2"},
    SymbolDrawing{4, Ground::Red, "", "M2 4.5 L4.5 2 L14 11.5 L11.5 14 Z"},
    SymbolDrawing{5, Ground::Blue, "", "M2 2 L8 2 L8 14 L2 14 Z"},
    SymbolDrawing{6, Ground::Green, "$"},
    SymbolDrawing{7, Ground::Teal, "", kFish},
    SymbolDrawing{8, Ground::Blue, "", "M4 3 L9.5 3 L9.5 13 L4 13 Z S M9.5 7 L11.5 7 L11.5 11.5 L13 11.5 L13 5.5 L11.5 4 "
                  "F K M5.2 4.3 L8.3 4.3 L8.3 7 L5.2 7 Z"},
    SymbolDrawing{9, Ground::Orange, "", "M3 6.5 L6 6.5 L11 3 L11 13 L6 9.5 L3 9.5 Z S M13 6 L13 10"},
    SymbolDrawing{10, Ground::Brown, "", "M8 3 L13.5 8 L12 8 L12 13 L4 13 L4 8 L2.5 8 Z"},
    SymbolDrawing{11, Ground::Brown, "",
                  "S M5 3 L5 13 M3.5 3 L3.5 6.5 L6.5 6.5 L6.5 3 M11 13 L11 3 Q8.8 5 9.5 9 L11 9"},
    SymbolDrawing{12, Ground::Orange, "", "M6.5 6 L9.5 6 L10.5 13 L5.5 13 Z O8 4.3 1.3 S M2.8 3 L5.5 4 M13.2 3 L10.5 4"},
    SymbolDrawing{13, Ground::Brown, "", "M3 3.5 L13 3.5 L8 9 Z S M8 8 L8 12.5 M5 12.7 L11 12.7"},
    SymbolDrawing{14, Ground::Black, "", "O8 6.8 4 M6 9 L10 9 L10 13.3 L6 13.3 Z K O6.4 7 1.1 O9.6 7 1.1"},
    SymbolDrawing{19, Ground::Teal, "", "M2.5 8.5 L12 12.5 L13.5 8 Q8 10 2.5 8.5 Z S M7 9 L9.5 2.8 M6 4.5 L11 6.5"},
    SymbolDrawing{20, Ground::Grey, "?"},
    SymbolDrawing{21, Ground::Red, "",
                  "O8 4 1.8 S M4 4 L8 8 L12 4 M8 7 L8 10 M2.5 12 Q4.3 10.3 6.2 12 Q8 13.7 9.8 12 Q11.6 10.3 13.5 12"},
    SymbolDrawing{37, Ground::Violet, "", kRings},
    SymbolDrawing{150, Ground::Teal, "", "M3 4.5 L13 4.5 L11 8.5 L5 8.5 Z S M2.5 13 L13.5 10"},
    SymbolDrawing{151, Ground::Green, "", "M8 3 L14 13 L10 13 L8 9 L6 13 L2 13 Z"},
    SymbolDrawing{152, Ground::Blue, "WC"},
    SymbolDrawing{153, Ground::Blue, "", "M4 7 Q8 1 12 7 Z S M5 8.8 L4.5 10.2 M8 8.8 L8 10.2 M11 8.8 L11.5 10.2 "
                  "M5.8 11.8 L5.6 13.2 M10.2 11.8 L10.4 13.2"},
    SymbolDrawing{154, Ground::Blue, "", "M8 2.3 Q12.5 8 12 10 Q11.5 13.5 8 13.5 Q4.5 13.5 4 10 Q3.5 8 8 2.3 Z"},
    SymbolDrawing{155, Ground::Blue, "",
                  "M3.5 4 L6 3 L7.5 6 L6 7.3 Q7 9.3 8.8 10 L10 8.5 L13 10 L12 12.6 Q3.5 12.5 3.5 4 Z"},
    SymbolDrawing{156, Ground::Red, "", "M6.3 3 L9.7 3 L9.7 6.3 L13 6.3 L13 9.7 L9.7 9.7 L9.7 13 L6.3 13 L6.3 9.7 "
                  "L3 9.7 L3 6.3 L6.3 6.3 Z"},
    SymbolDrawing{157, Ground::Blue, "i"},
    SymbolDrawing{158, Ground::Blue, "P"},
    SymbolDrawing{159, Ground::Green, "", "O8 6.3 3.9 M7.1 9 L8.9 9 L8.9 13.7 L7.1 13.7 Z"},
    SymbolDrawing{160, Ground::Green, "", "S M3 5 L13 5 M5.5 5 L3.5 12.5 M10.5 5 L12.5 12.5 M2.5 8.7 L13.5 8.7"},
    SymbolDrawing{161, Ground::Green, "",
                  "M2.5 5 L5.5 5 L6.5 3.3 L9.5 3.3 L10.5 5 L13.5 5 L13.5 12.3 L2.5 12.3 Z K O8 8.5 2.3"},
    SymbolDrawing{162, Ground::Green, "", kSkier},
    SymbolDrawing{163, Ground::Teal, "", "O11 5.5 1.6 S M4 8.5 L7.5 5 L10 8.5 "
                  "M2.5 11.8 Q4.3 10 6.2 11.8 Q8 13.5 9.8 11.8 Q11.6 10 13.5 11.8"},
    SymbolDrawing{164, Ground::Teal, "", "M6.5 3 L9 3 L12.5 13 L6.5 13 Z S M2.5 5.5 L5 5.5 M2.5 8.5 L5 8.5 M2.5 11.5 L5 11.5"},
    SymbolDrawing{165, Ground::Grey, "CA"},
    SymbolDrawing{166, Ground::Red, "!"},
    SymbolDrawing{167, Ground::Red, "", "M2.5 6.3 L13.5 6.3 L13.5 9.7 L2.5 9.7 Z"},
    SymbolDrawing{168, Ground::Grey, "", "S O8 8 4.5"},
    SymbolDrawing{169, Ground::Green, "", "O8 8 5.2 K S M5 4 Q8 8 5 12 M11 4 Q8 8 11 12"},
    SymbolDrawing{170, Ground::Blue, "", kCar},
    SymbolDrawing{171, Ground::Green, "",
                  "S O8 8 4 M8 2.3 L8 6 M8 10 L8 13.7 M2.3 8 L6 8 M10 8 L13.7 8"},
    SymbolDrawing{172, Ground::Orange, "", kBag},
    SymbolDrawing{173, Ground::Blue, "",
                  "S M3 4.5 L3 12.5 M3 10.5 L13 10.5 M13 12.5 L13 8.5 F O5.3 7.7 1.4 M7 6.7 L13 8 L13 9.7 L7 9.7 Z"},
    SymbolDrawing{174, Ground::Grey, "", "S M3.5 13 L10 6 M5 3.5 Q11 4.5 12.5 11"},
    SymbolDrawing{175, Ground::Green, "", "S M4 13.5 Q13 11 8 8 Q3.5 5.5 11.5 2.5"},
    SymbolDrawing{176, Ground::Blue, "", kTruck},
    SymbolDrawing{177, Ground::Green, "", kArrow},
    SymbolDrawing{178, Ground::Orange, "", "M4 3 L12.5 5.7 L5.5 8.7 L5.5 13.5 L4 13.5 Z"},
    SymbolDrawing{179, Ground::Red, "", "S O8 8 5.5 M5 5 L11 11 M11 5 L5 11"},
    SymbolDrawing{180, Ground::Blue, "24"},
    SymbolDrawing{181, Ground::Orange, "", kFish},
    SymbolDrawing{182, Ground::Teal, "Bt"},
    SymbolDrawing{183, Ground::Teal, "Td"},
    SymbolDrawing{184, Ground::Red, "", kAnchor},
    SymbolDrawing{185, Ground::Orange, "", kRings},
    SymbolDrawing{186, Ground::Red, "CG"},
    SymbolDrawing{187, Ground::Teal, "Rf"},
    SymbolDrawing{188, Ground::Teal, "", "S M4.5 13.5 Q2.5 10 4.5 7.5 Q6.5 5 4.5 2.5 M8 13.5 Q6 10.5 8 8.5 Q10 6.5 8 4.5 "
                  "M11.5 13.5 Q9.5 10 11.5 7.5 Q13.5 5 11.5 2.5"},
    SymbolDrawing{189, Ground::Teal, "", "M2.5 5 L6.5 5 L8.5 11.5 L13.5 11.5 L13.5 13.5 L2.5 13.5 Z"},
    SymbolDrawing{190, Ground::Teal, "", "M2.5 5 L13.5 5 L13.5 7 L2.5 7 Z S M5 7 L5 13.5 M11 7 L11 13.5"},
    SymbolDrawing{191, Ground::Teal, "", "M8.5 2.3 L12.5 9 L8.5 9 Z M7 4 L7 9 L4 9 Z M2.5 10.3 L13.5 10.3 L12 13.3 L4 13.3 Z"},
    SymbolDrawing{192, Ground::Teal, "", "S O10.5 3.5 1 M10.5 4.5 L10.5 9.5 Q10.5 13 7.3 13 Q4.2 13 4.2 9 L6.2 10.3"},
    SymbolDrawing{193, Ground::Brown, "", "M5 5 L11 5 L11.5 10 L13.5 13 L2.5 13 L4.5 10 Z K S M6.5 7.5 L9.5 7.5"},
    SymbolDrawing{7680, Ground::Grey, "C0"},
    SymbolDrawing{8192, Ground::Grey, "C9"},
    SymbolDrawing{8193, Ground::Black, "US"},
    SymbolDrawing{8194, Ground::Black, "St"},
    SymbolDrawing{8195, Ground::Green, "Mi"},
    SymbolDrawing{8196, Ground::Violet, "TB"},
    SymbolDrawing{8197, Ground::Green, "", "S M6 3 L6 13.3 F M6 2.8 L12.5 5.5 L6 8.2 Z O11 12 1.4"},
    SymbolDrawing{8198, Ground::Grey, "", "O8 8 2"},
    SymbolDrawing{8199, Ground::Grey, "", "O8 8 3.3"},
    SymbolDrawing{8200, Ground::Grey, "", "O8 8 5 K O8 8 2.3"},
    SymbolDrawing{8201, Ground::Blue, "Fw"},
    SymbolDrawing{8202, Ground::Green, "Nt"},
    SymbolDrawing{8203, Ground::Red, "", kStar},
    SymbolDrawing{8204, Ground::Violet, "", "S O8 7 4.3 M8 7 L5 13.7 M8 7 L11 13.7 M3.7 7 L12.3 7 M8 2.7 L8 11.3"},
    SymbolDrawing{8205, Ground::Violet, "", "O8 8 5.3 K O6.7 5.5 .9 O9.5 5.7 .9 O8 8.2 .9"},
    SymbolDrawing{8206, Ground::Orange, "", kCar},
    SymbolDrawing{8207, Ground::Red, "", kCar},
    SymbolDrawing{8208, Ground::Brown, "", "M2.7 7 Q3.5 2.8 8 2.8 Q12.5 2.8 13.3 7 Z M2.7 8 L13.3 8 L13.3 9.4 L2.7 9.4 Z "
                  "M3 10.4 L13 10.4 L12 12.8 L4 12.8 Z"},
    SymbolDrawing{8209, Ground::Violet, "", "M2.7 5 L5 5 L5 11 L2.7 11 Z M11 5 L13.3 5 L13.3 11 L11 11 Z "
                  "M5 7 L11 7 L11 9 L5 9 Z"},
    SymbolDrawing{8210, Ground::Violet, "", "M2.7 4 L13.3 4 L13.3 12 L2.7 12 Z K M6.3 5.5 L10.8 8 L6.3 10.5 Z"},
    SymbolDrawing{8211, Ground::Violet, "", kColumns},
    SymbolDrawing{8212, Ground::Red, "Rx"},
    SymbolDrawing{8213, Ground::Brown, "", "M2.7 4.5 Q8 2 13.3 4.5 L8 13.7 Z K O6.5 6 1.1 O9.7 6.3 1.1 O8 9.3 1"},
    SymbolDrawing{8214, Ground::Orange, "", "M2.5 4.3 L13.5 4.3 L13.5 11.7 L2.5 11.7 Z K S M3 5 L8 9 L13 5"},
    SymbolDrawing{8215, Ground::Green, "",
                  "M2.5 4.5 L12 4.5 L13.5 8 L13.5 11 L2.5 11 Z O6 11.6 1.7 K M4 6 L7 6 L7 8 L4 8 Z"},
    SymbolDrawing{8216, Ground::Violet, "", "M8 3.5 L14 6.7 L8 10 L2 6.7 Z S M5 9 L5 11.5 Q8 13.5 11 11.5 L11 9"},
    SymbolDrawing{8217, Ground::Violet, "", "S M3 5 Q8 2 13 5 L13 10.5 Q8 14 3 10.5 Z M3 5 Q8 8.5 13 5"},
    SymbolDrawing{8218, Ground::Violet, "", kBag},
    SymbolDrawing{8219, Ground::Green, "", "O8 10.3 2.7 O4.4 7.5 1.3 O6.6 4.8 1.3 O9.4 4.8 1.3 O11.6 7.5 1.3"},
    SymbolDrawing{8220, Ground::Green, "", kBag},
    SymbolDrawing{8221, Ground::Violet, "", "M3.3 3.3 Q8 5 12.7 3.3 Q13 12 8 13.7 Q3 12 3.3 3.3 Z "
                  "K O6 7 1 O10 7 1 S M5.8 9.8 Q8 12 10.2 9.8"},
    SymbolDrawing{8222, Ground::Grey, "", kRamp},
    SymbolDrawing{8223, Ground::Grey, "", "S M8 2.7 L8 13.3 M2.7 8 L13.3 8"},
    SymbolDrawing{8226, Ground::Blue, "", "S M8 3 L8 12.7 M5 13 L11 13 M4 4.5 L12 4.5 "
                  "F M4 4.7 L6.2 9 L1.8 9 Z M12 4.7 L14.2 9 L9.8 9 Z"},
    SymbolDrawing{8227, Ground::Orange, "$"},
    SymbolDrawing{8228, Ground::Grey, "", "M8 3 L14 13 L2 13 Z K O8 9.7 1.4"},
    SymbolDrawing{8229, Ground::Grey, "", kArrow},
    SymbolDrawing{8230, Ground::Grey, "M"},
    SymbolDrawing{8231, Ground::Teal, "W"},
    SymbolDrawing{8232, Ground::Green, "L"},
    SymbolDrawing{8233, Ground::Grey, "",
                  "S M2.3 9.7 L13.7 9.7 M5 4 L5 13 M11 4 L11 13 M2.3 8 L5 4 Q8 10 11 4 L13.7 8"},
    SymbolDrawing{8234, Ground::Grey, "", "M4.3 2.7 L11.7 2.7 L11.7 13.3 L4.3 13.3 Z K M5.7 4.3 L7.2 4.3 L7.2 6 L5.7 6 Z "
                  "M8.8 4.3 L10.3 4.3 L10.3 6 L8.8 6 Z M5.7 7.5 L7.2 7.5 L7.2 9.2 L5.7 9.2 Z "
                  "M8.8 7.5 L10.3 7.5 L10.3 9.2 L8.8 9.2 Z"},
    SymbolDrawing{8235, Ground::Black, "", "M4.3 13.3 L4.3 6 Q4.3 2.7 8 2.7 Q11.7 2.7 11.7 6 L11.7 13.3 Z "
                  "K S M8 4.7 L8 10.5 M6 6.7 L10 6.7"},
    SymbolDrawing{8236, Ground::Brown, "", "M3 9 L8 5.5 L13 9 L13 13.7 L3 13.7 Z S M8 1.5 L8 6 M6.4 3 L9.6 3"},
    SymbolDrawing{8237, Ground::Blue, "", kColumns},
    SymbolDrawing{8238, Ground::Grey, "", "S M4 4 L12 12 M12 4 L4 12"},
    SymbolDrawing{8239, Ground::Grey, "", "M4 13.3 L4 7 Q4 2.7 8 2.7 Q12 2.7 12 7 L12 13.3 L10.7 11.7 L9.3 13.3 L8 11.7 "
                  "L6.7 13.3 L5.3 11.7 Z K O6.4 7 1 O9.6 7 1"},
    SymbolDrawing{8240, Ground::Teal, "", "M2.3 12.5 L6 5.5 L10 5.5 L13.7 12.5 Z"},
    SymbolDrawing{8241, Ground::Green, "", kStar},
    SymbolDrawing{8242, Ground::Black, "", "S M8 2.7 L4 13.3 M8 2.7 L12 13.3 M6.3 7 L9.7 7 M5.2 10.2 L10.8 10.2"},
    SymbolDrawing{8243, Ground::Grey, "", "M2.3 13.3 L2.3 8 Q3 2.7 8 2.7 Q13 2.7 13.7 8 L13.7 13.3 Z "
                  "K M5 13.3 L5 9 Q5 6 8 6 Q11 6 11 9 L11 13.3 Z"},
    SymbolDrawing{8244, Ground::Orange, "", "M2.7 8 Q3.5 2.7 8 2.7 Q12.5 2.7 13.3 8 Z S M8 8 L8 13 M3 13.2 L13 13.2"},
    SymbolDrawing{8245, Ground::Green, "", "M5.2 2.7 L8.5 11 L2 11 Z M10.8 2.7 L14 11 L7.5 11 Z M4.5 11 L6 11 L6 13.7 "
                  "L4.5 13.7 Z M10 11 L11.5 11 L11.5 13.7 L10 13.7 Z"},
    SymbolDrawing{8246, Ground::Green, "", "M6.5 2.7 L10 8.7 L11 7 L14.2 13.3 L1.8 13.3 Z"},
    SymbolDrawing{8247, Ground::Black, "", kRamp},
    SymbolDrawing{8248, Ground::Black, "", kArrow},
    SymbolDrawing{8249, Ground::Blue, "", "M8 2.3 L13.3 4.3 Q13 11 8 13.7 Q3 11 2.7 4.3 Z"},
    SymbolDrawing{8250, Ground::Violet, "", "M3 3 L13 3 L13 13 L3 13 Z K O5.6 5.6 1.1 O10.4 5.6 1.1 O8 8 1.1 "
                  "O5.6 10.4 1.1 O10.4 10.4 1.1"},
    SymbolDrawing{8251, Ground::Blue, "", kSkier},
    SymbolDrawing{8252, Ground::Blue, "", "M4 2.7 L7.5 2.7 L8 6.7 L12.7 8.3 L12.7 10.3 L4 10.3 Z S M3 12.8 L13.7 12.8"},
    SymbolDrawing{8253, Ground::Orange, "", kTruck},
    SymbolDrawing{8254, Ground::Red, "BC"},
    SymbolDrawing{8255, Ground::Brown, "", "M2.7 8 Q2.7 3.7 6 3.7 L10 3.7 Q13.3 3.7 13.3 8 Z M2.7 9 L13.3 9 L13.3 13 L2.7 13 Z"},
    SymbolDrawing{8256, Ground::Green, "", "S M3 8.5 L6.5 12 L13 4"},
    SymbolDrawing{8282, Ground::Red, "", "M5.5 5.5 Q8 1 10.5 5.5 Z M6 6 L10 6 L10 12 L6 12 Z M3.7 7.3 L12.3 7.3 L12.3 9.7 "
                  "L3.7 9.7 Z M5 12 L11 12 L11 13.7 L5 13.7 Z"},
    SymbolDrawing{8293, Ground::Green, "", "S O4.7 10.3 2.5 O11.3 10.3 2.5 M4.7 10.3 L6.7 6.3 L10.3 6.3 L8 10.3 L6.3 5 "
                  "M11.3 10.3 L9.8 4.5 L11 4"},
    SymbolDrawing{8359, Ground::Brown, "", "M2.7 7.5 L13.3 7.5 Q13 13.3 8 13.3 Q3 13.3 2.7 7.5 Z S M7 7 L12 2.7 M9.5 7 L13.7 3.7"},
    SymbolDrawing{8360, Ground::Brown, "De"},
    SymbolDrawing{8361, Ground::Brown, "It"},
    SymbolDrawing{8362, Ground::Brown, "", kFish},
    SymbolDrawing{8363, Ground::Brown, "", "M4 5 Q9 1.5 12.7 5 Q14.5 9 10 11.7 Q5 14.3 3.3 10.3 Z K O6.7 8.5 1.5"},
    SymbolDrawing{16384, Ground::Violet, "", "M8 1.7 L9.1 3.5 L9.1 6.3 L14.2 9.5 L14.2 11 L9.1 9.5 L9.1 12 L11 13.2 L11 14.2 "
                  "L8 13.5 L5 14.2 L5 13.2 L6.9 12 L6.9 9.5 L1.8 11 L1.8 9.5 L6.9 6.3 L6.9 3.5 Z"},
    SymbolDrawing{16385, Ground::Violet, "", "M8 3 L13.5 12.5 L2.5 12.5 Z"},
    SymbolDrawing{16386, Ground::Violet, "NB"},
    SymbolDrawing{16387, Ground::Violet, "", "O8 8 1.5 S M5 3.5 L11 3.5 L13.7 8 L11 12.5 L5 12.5 L2.3 8 Z"},
    SymbolDrawing{16388, Ground::Violet, "H"},
    SymbolDrawing{16389, Ground::Violet, "Pv"},
    SymbolDrawing{16390, Ground::Violet, "So"},
    SymbolDrawing{16391, Ground::Grey, "", "S M8 2.3 L5 13.7 M8 2.3 L11 13.7 M6.5 8 L9.5 8 M5.7 11 L10.3 11"},
    SymbolDrawing{16392, Ground::Grey, "", "S M8 6.3 L4.7 13.3 M8 6.3 L11.3 13.3 M6 11 L10 11"},
    SymbolDrawing{16393, Ground::Violet, "G"},
    SymbolDrawing{16394, Ground::Violet, "U"},
    SymbolDrawing{16395, Ground::Violet, "", "M2.3 7.5 Q3 2.3 8 2.3 Q13 2.3 13.7 7.5 Z S M3 7.5 L8 13.3 L13 7.5 M8 7.5 L8 13"},
    SymbolDrawing{16396, Ground::Violet, "VT"},
    SymbolDrawing{16397, Ground::Violet, "", kHexagon},
    SymbolDrawing{16398, Ground::Violet, "FA"},
    SymbolDrawing{16399, Ground::Violet, "OM"},
    SymbolDrawing{16400, Ground::Violet, "MA"},
    SymbolDrawing{16401, Ground::Violet, "TA"},
    SymbolDrawing{16402, Ground::Violet, "", kAnchor},
};

// Faces: what comes to a round face with eyes and a mouth. By code.
inline constexpr std::array kFaces{
    SymbolDrawing{8257, Ground::Yellow},
    SymbolDrawing{8258, Ground::Yellow, "", "M2.7 5.3 Q4 .3 8 .3 Q12 .3 13.3 5.3 L16 6.3 L13 6.3 Z"},
    SymbolDrawing{8259, Ground::Yellow, "", "O1.6 8 1.6 O14.4 8 1.6"},
    SymbolDrawing{8260, Ground::Yellow, "", "M3 4.7 L3.7 0 L6 2.5 L8 0 L10 2.5 L12.3 0 L13 4.7 Q8 2.5 3 4.7 Z"},
    SymbolDrawing{8261, Ground::Yellow, "", "M6 12 L10 12 L8 16 Z"},
    SymbolDrawing{8262, Ground::Brown, "", "O4 3.8 2.5 O8 2.5 2.5 O12 3.8 2.5 O2.4 7 1.8 O13.6 7 1.8"},
    SymbolDrawing{8263, Ground::Brown, "", "M3 4.5 Q8 -1 13 4.5 Q8 3 3 4.5 Z S M3 4 L1.7 13 M13 4 L14.3 13 M4.3 3.3 L3.5 13.7 "
                  "M11.7 3.3 L12.5 13.7"},
    SymbolDrawing{8264, Ground::Yellow, "", "M1.3 12 Q0 .5 8 .5 Q16 .5 14.7 12 L12.7 12 Q14 5 8 4 Q2 5 3.3 12 Z"},
    SymbolDrawing{8265, Ground::Yellow, "", "M2.3 6 Q3 .7 8 .7 Q13 .7 13.7 6 Q10 3 2.3 6 Z O1.5 8.5 1.5 O14.5 8.5 1.5"},
    SymbolDrawing{8266, Ground::Yellow, "", "O8 1.6 1.6 M2.3 6 Q3 2 8 2 Q13 2 13.7 6 Q8 3 2.3 6 Z"},
    SymbolDrawing{8267, Ground::Yellow, "", "M0 5.5 L16 5.5 L16 4.3 L12 4.3 L11 .7 L5 .7 L4 4.3 L0 4.3 Z"},
    SymbolDrawing{8268, Ground::Yellow, "", "M2 4.3 L14 4.3 L14 6 L2 6 Z M13 5 L16 8.5 L14.5 9 L12.5 6 Z"},
    SymbolDrawing{8269, Ground::Yellow, "", "O8 1.5 1.5 M4 4 Q8 1.5 12 4 Z"},
    SymbolDrawing{8270, Ground::Yellow, "", "M2 5.5 Q8 -1.5 14 5.5 Z O5.7 7.5 1.8 S M2 5.5 L7 8"},
    SymbolDrawing{8271, Ground::Yellow, "", "M2 7 Q2 .7 8 .7 Q14 .7 14 7 L13 7 L12 4.7 L4 4.7 L3 7 Z M3 6 L13 6 L13 8.5 L3 8.5 Z"},
    SymbolDrawing{8272, Ground::Green, "", "O5.3 7 1.6 O10.7 7 1.6"},
    SymbolDrawing{8273, Ground::Green, "", "S M5.5 3.5 L3.5 0.5 M10.5 3.5 L12.5 .5 M8 2.5 L8 5"},
    SymbolDrawing{8274, Ground::Grey, "", "M2.3 6 L2.5 0.5 L6.5 3 Z M13.7 6 L13.5 0.5 L9.5 3 Z S M0 9.5 L4 9.7 M16 9.5 L12 9.7"},
    SymbolDrawing{8275, Ground::Brown, "", "M2.7 3.5 L0 5 L.7 11 L3 10 Z M13.3 3.5 L16 5 L15.3 11 L13 10 Z O8 9 1.3"},
    SymbolDrawing{8276, Ground::Pink, "", "M2.3 5.5 L2.7 .7 L6 2.7 Z M13.7 5.5 L13.3 .7 L10 2.7 Z O7 9.3 .9 O9 9.3 .9"},
};
// clang-format on

}  // namespace ui::wx
