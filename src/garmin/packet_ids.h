// The packets that the program knows, by link protocol.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace garmin {

// A protocol number that is not supported or not known.
inline constexpr std::uint16_t kNone = 65535;

enum class PacketKind {
  None,
  Pid_Ack_Byte,
  Pid_Nak_Byte,
  Pid_Display_Data,
  Pid_Protocol_Array,
  ProductRequest,
  Pid_Product_Data,
  Pid_Xfer_Cmplt,
  Pid_Date_Time_Data,
  Pid_Position_Data,
  Pid_Prx_Wpt_Data,
  Pid_Records,
  Pid_Rte_Hdr,
  Pid_Rte_Wpt_Data,
  Pid_Almanac_Data,
  Pid_Trk_Data,
  Pid_Wpt_Data,
  Voltages,
  PvtData,
  Pid_Rte_Link_Data,
  Pid_Trk_Hdr,
  Count
};

inline constexpr std::uint16_t kAnyLink = 0;

struct PacketRow {
  std::uint8_t id;
  std::uint16_t link;  // 1, 2 or kAnyLink
  PacketKind kind;
  std::string_view log_text;  // what the debug log says when such a packet is handled
};

inline constexpr std::array kPackets{
    PacketRow{6, kAnyLink, PacketKind::Pid_Ack_Byte, "Pid_Ack_Byte record\n"},
    PacketRow{21, kAnyLink, PacketKind::Pid_Nak_Byte, "Pid_Nak_Byte record\n"},
    PacketRow{69, kAnyLink, PacketKind::Pid_Display_Data, "Pid_Display_Data record\n"},
    PacketRow{253, kAnyLink, PacketKind::Pid_Protocol_Array, "Pid_Protocol_Array record\n"},
    PacketRow{255, kAnyLink, PacketKind::Pid_Product_Data, "Pid_Product_Data record\n"},
    PacketRow{254, 1, PacketKind::ProductRequest, "Received unexpected SEND ID\n"},
    PacketRow{12, 1, PacketKind::Pid_Xfer_Cmplt, "Pid_Xfer_Cmplt record\n"},
    PacketRow{14, 1, PacketKind::Pid_Date_Time_Data, "Pid_Date_Time_Data record\n"},
    PacketRow{17, 1, PacketKind::Pid_Position_Data, "Pid_Position_Data record\n"},
    PacketRow{19, 1, PacketKind::Pid_Prx_Wpt_Data, "Pid_Prx_Wpt_Data record\n"},
    PacketRow{27, 1, PacketKind::Pid_Records, "Pid_Records # of Records record\n"},
    PacketRow{29, 1, PacketKind::Pid_Rte_Hdr, "Pid_Rte_Hdr record\n"},
    PacketRow{30, 1, PacketKind::Pid_Rte_Wpt_Data, "Pid_Rte_Wpt_Data record\n"},
    PacketRow{31, 1, PacketKind::Pid_Almanac_Data, "Pid_Almanac_Data record\n"},
    PacketRow{34, 1, PacketKind::Pid_Trk_Data, "Pid_Trk_Data record\n"},
    PacketRow{35, 1, PacketKind::Pid_Wpt_Data, "Pid_Wpt_Data record\n"},
    PacketRow{40, 1, PacketKind::Voltages, "Voltages record\n"},
    PacketRow{51, 1, PacketKind::PvtData, "PVT data record\n"},
    PacketRow{98, 1, PacketKind::Pid_Rte_Link_Data, "Pid_Rte_Link_Data record\n"},
    PacketRow{99, 1, PacketKind::Pid_Trk_Hdr, "Pid_Trk_Hdr record\n"},
    PacketRow{4, 2, PacketKind::Pid_Almanac_Data, "Pid_Almanac_Data2 record\n"},
    PacketRow{12, 2, PacketKind::Pid_Xfer_Cmplt, "Pid_Xfer_Cmplt2 record\n"},
    PacketRow{20, 2, PacketKind::Pid_Date_Time_Data, "Pid_Date_Time_Data2 record\n"},
    PacketRow{24, 2, PacketKind::Pid_Position_Data, "Pid_Position_Data2 record\n"},
    PacketRow{35, 2, PacketKind::Pid_Records, "Pid_Records2 # of Records record\n"},
    PacketRow{37, 2, PacketKind::Pid_Rte_Hdr, "Pid_Rte_Hdr2 record\n"},
    PacketRow{39, 2, PacketKind::Pid_Rte_Wpt_Data, "Pid_Rte_Wpt_Data2 record\n"},
    PacketRow{43, 2, PacketKind::Pid_Wpt_Data, "Pid_Wpt_Data2 record\n"},
};

// The row of a packet id under a link protocol; nullptr when that protocol does not know it.
[[nodiscard]] constexpr const PacketRow* find_packet(std::uint8_t id, std::uint16_t link) {
  for (const PacketRow& row : kPackets)
    if (row.id == id && (row.link == kAnyLink || row.link == link)) return &row;
  return nullptr;
}

// The id of packets of a kind under a link protocol; nothing when it has none.
[[nodiscard]] constexpr std::optional<std::uint8_t> id_of(PacketKind kind, std::uint16_t link) {
  for (const PacketRow& row : kPackets)
    if (row.kind == kind && (row.link == kAnyLink || row.link == link)) return row.id;
  return std::nullopt;
}

}  // namespace garmin
