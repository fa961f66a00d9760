#pragma once
// What every test of the run shares: a catalogue written as text, and the run
// with the whole started game around it (`Run`) or alone (`BareRun`).

#include "support/headless_app.h"
#include "support/draws_by_hand.h"
#include "support/probe_station.h"
#include "support/run_log.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorn::test {

inline GameFolderOptions withCatalogue(std::string text) {
    GameFolderOptions options;
    options.catalogue = std::move(text);
    return options;
}

class Run : public ::testing::Test {
protected:
    void start(const std::string& name, std::initializer_list<CatalogueEntry> entries) {
        headless = std::make_unique<HeadlessApp>(name, withCatalogue(catalogueOf(entries)));
        ASSERT_TRUE(headless->started);
    }
    Application& app() { return headless->app; }
    std::string log() const { return headless->folder.logText(); }
    // Replaces the running station with a probe that answers as told.
    ProbeStation& probe() {
        auto owned = std::make_unique<ProbeStation>();
        ProbeStation& ref = *owned;
        app().station = std::move(owned);
        return ref;
    }
    void frames(int n, double dt) {
        for (int i = 0; i < n; ++i) {
            app().update(dt);
        }
    }
    int numberAt(int position) {
        return app().levels[static_cast<std::size_t>(app().stationOrder[static_cast<std::size_t>(position)])].number;
    }
    std::unique_ptr<HeadlessApp> headless;
};

// The run alone, without the rest of the game: no window, no sound device and
// no log file (the run's lines then only echo on standard error, where a test
// can read them). Enough for the deal, the clock, the verdicts and their
// sounds, and quick to make.
class BareRun : public ::testing::Test {
protected:
    BareRun() { testing::internal::CaptureStderr(); }
    ~BareRun() override { testing::internal::GetCapturedStderr(); }

    void catalogue(std::initializer_list<CatalogueEntry> entries) {
        ASSERT_TRUE(loadLevelsFromText(app.levels, catalogueOf(entries)));
        app.audio.requestLog = &sounds;
    }
    void shippedCatalogue() {
        ASSERT_TRUE(loadLevels(app.levels, (gameFolder() / "data" / "levels" / "levels.json").u8string()));
        app.audio.requestLog = &sounds;
    }
    // Every line the run has written so far, as echoed on standard error.
    std::string log() {
        echoed += testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return echoed;
    }
    ProbeStation& probe() {
        auto owned = std::make_unique<ProbeStation>();
        ProbeStation& ref = *owned;
        app.station = std::move(owned);
        return ref;
    }
    void frames(int n, double dt) {
        for (int i = 0; i < n; ++i) {
            app.update(dt);
        }
    }
    int numberAt(int position) const {
        return app.levels[static_cast<std::size_t>(app.stationOrder[static_cast<std::size_t>(position)])].number;
    }

    std::vector<std::string> sounds;   // outlives the application below
    Application app;
    std::string echoed;
};

}  // namespace vorn::test
