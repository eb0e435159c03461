#include "simulators/fault.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace simulators {
namespace {

constexpr std::array kFaultNames = std::to_array<std::pair<std::string_view, Fault::Kind>>({
    {"drop-ack", Fault::Kind::DropAck},
    {"bad-checksum", Fault::Kind::BadChecksum},
    {"silent", Fault::Kind::Silent},
    {"unplug", Fault::Kind::Unplug},
    {"noise", Fault::Kind::Noise},
});

}  // namespace

std::optional<Fault> parse_fault(std::string_view text) {
  const std::size_t at = text.find('@');
  if (at == std::string_view::npos) return std::nullopt;
  const auto name = std::ranges::find(kFaultNames, text.substr(0, at), [](const auto& row) { return row.first; });
  const auto packet = base::parse_integer(text.substr(at + 1));
  if (name == kFaultNames.end() || !packet || *packet < 1 || *packet > 1'000'000'000) return std::nullopt;
  return Fault{name->second, static_cast<int>(*packet)};
}

}  // namespace simulators
