#include "stations/level_factory.h"

#include "stations/aim_stations.h"
#include "stations/memory_stations.h"
#include "stations/panel_stations.h"
#include "stations/code_stations.h"
#include "stations/dial_stations.h"
#include "stations/grid_stations.h"
#include "stations/paperwork_stations.h"
#include "stations/timing_stations.h"

#include <vector>

namespace vorn {

namespace {

template <typename T>
[[maybe_unused]] std::unique_ptr<Level> make() {
    return std::make_unique<T>();
}

struct FactoryEntry {
    const char* type;
    std::unique_ptr<Level> (*create)();
};

// One line per station kind. A kind whose class is not written yet is simply
// absent and falls back to the generic station.
const std::vector<FactoryEntry> kStations = {
    {"button", make<ButtonLevel>},
    {"hold", make<HoldLevel>},
    {"twohand", make<TwoHandLevel>},
    {"patience", make<PatienceLevel>},
    {"timing", make<TimingLevel>},
    {"orbit", make<OrbitLevel>},
    {"eula", make<EulaLevel>},
    {"settings", make<SettingsLevel>},
    {"quiz", make<QuizLevel>},
    {"stroop", make<StroopLevel>},
    {"stamp", make<StampLevel>},
    {"reverse", make<ReverseLevel>},
    {"whack", make<WhackLevel>},
    {"doubleclick", make<DoubleClickLevel>},
    {"precision", make<PrecisionLevel>},
    {"decoy", make<DecoyLevel>},
    {"greased", make<GreasedLevel>},
    {"hotcold", make<HotColdLevel>},
    {"simon", make<SimonLevel>},
    {"antisimon", make<AntiSimonLevel>},
    {"sequence", make<SequenceLevel>},
    {"recall", make<RecallLevel>},
    {"memory", make<MemoryLevel>},
    {"morse", make<MorseLevel>},
    {"lightsout", make<LightsOutLevel>},
    {"maze", make<MazeLevel>},
    {"pipes", make<PipesLevel>},
    {"wires", make<WiresLevel>},
    {"switches", make<SwitchesLevel>},
    {"fusebox", make<FuseboxLevel>},
    {"valve", make<ValveLevel>},
    {"gauntlet", make<GauntletLevel>},
    {"dial", make<DialLevel>},
    {"combo", make<ComboLevel>},
    {"calibrate", make<CalibrateLevel>},
    {"scale", make<ScaleLevel>},
    {"keypad", make<KeypadLevel>},
    {"liarkeypad", make<LiarKeypadLevel>},
};

}  // namespace

std::unique_ptr<Level> createLevel(const std::string& type) {
    for (const FactoryEntry& entry : kStations) {
        if (type == entry.type) {
            return entry.create();
        }
    }
    return std::make_unique<GenericLevel>();
}

}  // namespace vorn
