// Names of settings and play options, and the storing of their values.
#include "shell/set_value.h"

#include <array>

#include "base/numbers.h"
#include "files/settings_keys.h"
#include "state/gauge.h"
#include "state/options.h"
#include "state/session.h"

namespace qlm {
namespace {

struct Option {
  TextView name;
  bool* flag;
};

// Options that no file keeps.
constexpr Option kOptions[] = {
    {u"HalfField", &HalfField},         {u"Random", &Random},
    {u"ExRandom", &ExRandom},           {u"FourDMode", &FourDMode},
    {u"Pressure", &Pressure},           {u"HazardGauge", &HazardGauge},
    {u"RandomHiSpeed", &RandomHiSpeed}, {u"ComboHiSpeed", &ComboHiSpeed},
    {u"EchoEnabled", &EchoEnabled},
};

std::optional<Text> Unfit(TextView name, TextView value) {
  return Join(u"\"", value, u"\" is no value for ", name);
}

std::optional<Text> SetAutoLane(TextView name, TextView value) {
  std::array<bool, kLanes> lanes{};
  if (!value.empty()) {
    for (const Text& piece : Split(value, u"+")) {
      int32_t channel = ToWhole(piece).value_or(0);
      // The second direction of a turntable belongs to its lane.
      if (channel == 17 || channel == 27) --channel;
      if (!IsNoteChannel(channel)) return Unfit(name, value);
      lanes[static_cast<size_t>(channel - 11)] = true;
    }
  }
  AutoLane = lanes;
  return std::nullopt;
}

std::optional<Text> SetPlayerForce(TextView name, TextView value) {
  const std::optional<int32_t> force = ToWhole(value);
  if (!force || *force < 0 || *force > 3) return Unfit(name, value);
  PlayerForce = *force;
  return std::nullopt;
}

}  // namespace

std::optional<Text> SetValue(TextView name, TextView value) {
  if (EqualsAnyCase(name, u"AutoLane")) return SetAutoLane(name, value);
  if (EqualsAnyCase(name, u"PlayerForce")) return SetPlayerForce(name, value);
  for (const Option& option : kOptions) {
    if (!EqualsAnyCase(name, option.name)) continue;
    const std::optional<bool> flag = ToBoolean(value);
    if (!flag) return Unfit(name, value);
    *option.flag = *flag;
    return std::nullopt;
  }
  for (const auto& rows : {SettingKeys(), OwnSettingKeys()}) {
    for (const SettingKey& row : rows) {
      if (!EqualsAnyCase(name, row.key)) continue;
      if (!StoreSetting(row.variable, value)) return Unfit(name, value);
      return std::nullopt;
    }
  }
  return Join(u"there is no setting and no play option by the name ", name);
}

}  // namespace qlm
