#include "ui/menu.h"

#include <array>

namespace ui {
namespace {

constexpr MenuEntry open(std::string_view text) { return {MenuEntry::Kind::Menu, text}; }
constexpr MenuEntry item(int id) { return {MenuEntry::Kind::Command, {}, id}; }
constexpr MenuEntry kEnd{MenuEntry::Kind::End};
constexpr MenuEntry kLine{MenuEntry::Kind::Separator};

// clang-format off
constexpr std::array kMenu{
    open("&File"),
        item(80), item(40058), item(40102), kLine,
        open("&Clear"),
            item(40005), item(40006), item(40007), item(40008), item(40009), item(40010), item(40011), kEnd,
        kLine,
        item(40182), item(40015), item(40107), kLine,
        open("Seria&l Debug"),
            item(100),
            open("Serial De&bug Format"), item(40054), item(40055), kEnd,
            item(99), kEnd,
        kLine,
        item(97), kEnd,
    open("&GPS"),
        item(40310), item(40311), MenuEntry{MenuEntry::Kind::Ports, "&Port"}, item(40330), kLine,
        item(40047),
        open("&Download from GPS"),
            item(40028), item(40029), item(40030), item(40034), item(40035), item(40032), item(40033), item(40185),
            item(40186), item(40036), item(40037), kEnd,
        open("&Upload to GPS"),
            item(40038), item(40039), item(40040), item(40044), item(40059), item(40042), item(40043), item(40187),
            item(40188), item(40150), item(40045), item(40046), kEnd,
        open("&Commands"), item(40048), item(40049), item(40050), item(40051), kLine, item(40053), kEnd,
        kLine,
        open("Display &Bitmap"), item(40052), item(40184), item(40099), item(40100), item(40106), kEnd,
        kEnd,
    open("&Waypoints"),
        item(40183), item(40179), kLine, item(40117), item(40116), kLine, item(40134), item(40135), item(40136), kLine,
        open("&Proximity Waypoints"), item(40300), item(40301), kEnd,
        kEnd,
    open("&Routes"), item(40189), item(40190), kLine, item(40119), item(40118), kEnd,
    open("&Tracks"), item(40148), item(40147), item(40321), kLine, item(40156), kEnd,
    open("&Events"), item(40141), item(40142), kLine, item(40159), item(40160), kEnd,
    open("&View"), item(40320), kEnd,
    open("&Street Atlas"), item(40094), item(40093), item(40096), item(40097), item(40095), kEnd,
    open("&Help"), item(40103), item(40105), kLine, item(40207), kEnd,
};
// clang-format on

}  // namespace

std::span<const MenuEntry> menu() { return kMenu; }

}  // namespace ui
