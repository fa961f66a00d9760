#include "stations/memory_stations.h"

#include "audio/audio_system.h"
#include "gfx/graphics.h"
#include "stations/station_kit.h"

#include <algorithm>
#include <iterator>

namespace vorn {

namespace {

// Simon and anti-Simon share one board: four big pads in a square around the
// middle of the area, numbered reading order.
void layFourPads(Rect (&pads)[4], const Rect& area) {
    const int cx = area.x + area.w / 2;
    pads[0] = Rect{cx - 160, area.y + 70, 150, 150};
    pads[1] = Rect{cx + 10, area.y + 70, 150, 150};
    pads[2] = Rect{cx - 160, area.y + 240, 150, 150};
    pads[3] = Rect{cx + 10, area.y + 240, 150, 150};
}

// The first pad (0 to 3) under the pointer, or -1 off the pads.
int padAt(const Rect (&pads)[4], int x, int y) {
    for (int p = 0; p < 4; ++p) {
        if (contains(pads[p], x, y)) {
            return p;
        }
    }
    return -1;
}

int pickOneOfFour(Rng& rng) { return static_cast<int>(rawDraw(rng) & 3u); }

}  // namespace

// ---------------------------------------------------------------- Simon

void SimonLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    rng = &engine;
    maxLength = number < 40 ? 4 : 5;
    layFourPads(pads, area);
    sequence.assign(1, pickOneOfFour(engine));
    showing = true;
    inputIndex = 0;
    showTimer = 0.0;
    litPad = -1;
}

LevelResult SimonLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    const int length = static_cast<int>(sequence.size());
    if (showing) {
        // Each pad gets a 0.55 s slot: lit for the first 0.33 s, then dark,
        // so the same pad twice in a row reads as two flashes. The mouse is
        // ignored until the whole sequence has played.
        showTimer += dt;
        const int k = static_cast<int>(showTimer / 0.55);
        if (k >= length) {
            showing = false;
            inputIndex = 0;
            litPad = -1;
        } else {
            litPad = showTimer - k * 0.55 < 0.33 ? sequence[static_cast<std::size_t>(k)] : -1;
        }
        return LevelResult::Running;
    }
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    const int p = padAt(pads, in.mouseX, in.mouseY);
    if (p < 0) {
        return LevelResult::Running;
    }
    litPad = p;
    if (p != sequence[static_cast<std::size_t>(inputIndex)]) {
        audio.playFail();
        return LevelResult::Failed;
    }
    audio.playClick();
    ++inputIndex;
    if (inputIndex < length) {
        return LevelResult::Running;
    }
    if (length < maxLength) {
        // One more pad, and the whole sequence again from the top.
        sequence.push_back(pickOneOfFour(*rng));
        showing = true;
        showTimer = 0.0;
        return LevelResult::Running;
    }
    audio.playPass();
    return LevelResult::Solved;
}

void SimonLevel::render(Graphics& g) {
    static constexpr Color resting[4] = {rgb(120, 40, 40), rgb(40, 90, 50), rgb(90, 80, 30),
                                         rgb(40, 60, 100)};
    static constexpr Color lit[4] = {palette::alarmRed, palette::terminalGreen, palette::gold,
                                     palette::signalBlue};
    for (int p = 0; p < 4; ++p) {
        g.roundRect(pads[p], 10, p == litPad ? lit[p] : resting[p], true);
    }
    char status[32];
    Graphics::formatInto(status, sizeof status, "%s  len %d/%d", showing ? "WATCH" : "REPEAT",
                         static_cast<int>(sequence.size()), maxLength);
    g.text(status, playArea.x + playArea.w / 2, playArea.y + 34, TextSize::Normal, palette::gold,
           true, true);
    instructionLine(g, playArea, "REPEAT THE SEQUENCE");
}

// ------------------------------------------------------------ AntiSimon

void AntiSimonLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    rng = &engine;
    layFourPads(pads, area);
    flashingPad = pickOneOfFour(engine);
    flashTimer = 0.0;
    std::fill(std::begin(done), std::end(done), false);
}

LevelResult AntiSimonLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    // The flash moves on a fixed beat and may land where it already was, or
    // on a pad the player has ticked off: nothing is ever safe for good.
    flashTimer += dt;
    if (flashTimer > 0.9) {
        flashTimer = 0.0;
        flashingPad = pickOneOfFour(*rng);
    }
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    const int p = padAt(pads, in.mouseX, in.mouseY);
    if (p < 0) {
        return LevelResult::Running;
    }
    if (p == flashingPad) {
        audio.playFail();
        return LevelResult::Failed;
    }
    if (!done[p]) {
        done[p] = true;
        audio.playClick();
    }
    // Three different pads are enough; the fourth never has to be touched.
    if (std::count(std::begin(done), std::end(done), true) >= 3) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void AntiSimonLevel::render(Graphics& g) {
    for (int p = 0; p < 4; ++p) {
        const Rect& pad = pads[p];
        const char* label = nullptr;
        Color fill = palette::bronze;
        if (p == flashingPad) {
            fill = palette::alarmRed;
            label = "AVOID";
        } else if (done[p]) {
            fill = palette::darkGreen;
            label = "OK";
        }
        g.roundRect(pad, 10, fill, true);
        if (label != nullptr) {
            g.text(label, pad.x + pad.w / 2, pad.y + pad.h / 2, TextSize::Normal, palette::ink,
                   true, true);
        }
    }
    instructionLine(g, playArea, "CLICK ALL PADS EXCEPT THE FLASHING ONE");
}

// ------------------------------------------------------------- Sequence

void SequenceLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    switchCount = 3;
    nextExpected = 2;
    const int q = area.w / 4;
    for (int i = 0; i < 3; ++i) {
        switches[i] = Rect{area.x - 30 + (i + 1) * q, area.y + area.h / 2 - 60, 60, 120};
        pressed[i] = false;
    }
}

LevelResult SequenceLevel::update(double /*dt*/, const InputState& in, AudioSystem& audio) {
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    // Only right, middle, left is accepted; a switch thrown twice is out of
    // order the second time too.
    for (int i = 0; i < switchCount; ++i) {
        if (!contains(switches[i], in.mouseX, in.mouseY)) {
            continue;
        }
        if (i != nextExpected) {
            audio.playFail();
            return LevelResult::Failed;
        }
        pressed[i] = true;
        audio.playClick();
        --nextExpected;
        if (nextExpected < 0) {
            audio.playPass();
            return LevelResult::Solved;
        }
    }
    return LevelResult::Running;
}

void SequenceLevel::render(Graphics& g) {
    // No labels at all: the order is only in the catalogue's instruction.
    for (int i = 0; i < switchCount; ++i) {
        const Rect& s = switches[i];
        g.roundRect(s, 6, palette::darkBrass, true);
        const int leverY = pressed[i] ? s.y + s.h - 50 : s.y + 10;
        g.roundRect(Rect{s.x + 12, leverY, s.w - 24, 40}, 4,
                    pressed[i] ? palette::terminalGreen : palette::orange, true);
    }
}

// --------------------------------------------------------------- Recall

void RecallLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    spotCount = number < 40 ? 4 : 5;
    for (int i = 0; i < spotCount; ++i) {
        spots[i].x = uniformInt(engine, area.x + 80, area.x + area.w - 80);   // x first, then y
        spots[i].y = uniformInt(engine, area.y + 80, area.y + area.h - 80);
    }
    showing = true;
    index = 0;
    showTimer = 0.0;
}

LevelResult RecallLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    if (showing) {
        showTimer += dt;
        index = static_cast<int>(showTimer / 0.8);
        if (index >= spotCount) {
            showing = false;
            index = 0;
        }
        return LevelResult::Running;
    }
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    // Nothing is drawn to aim at any more, so a near miss is a miss: it has
    // to land strictly within 40 px of where the spot was.
    const Spot& spot = spots[index];
    if (distance(in.mouseX, in.mouseY, spot.x, spot.y) < 40.0) {
        audio.playClick();
        ++index;
        if (index >= spotCount) {
            audio.playPass();
            return LevelResult::Solved;
        }
        return LevelResult::Running;
    }
    audio.playFail();
    return LevelResult::Failed;
}

void RecallLevel::render(Graphics& g) {
    const int cx = playArea.x + playArea.w / 2;
    if (showing) {
        const int k = static_cast<int>(showTimer / 0.8);
        const int last = std::min(k, spotCount - 1);
        for (int i = 0; i <= last; ++i) {
            const Spot& s = spots[i];
            if (i == k) {
                g.circle(s.x, s.y, 34, palette::gold, true);
                char number[16];
                Graphics::formatInto(number, sizeof number, "%d", i + 1);
                g.text(number, s.x, s.y, TextSize::Large, palette::ink, true, true);
            } else {
                g.circle(s.x, s.y, 14, rgb(102, 68, 18), true);
            }
        }
        g.text("MEMORISE THE ORDER", cx, playArea.y + 30, TextSize::Normal,
               palette::terminalGreen, true, true);
    } else {
        char prompt[32];
        Graphics::formatInto(prompt, sizeof prompt, "CLICK SPOT %d / %d", index + 1, spotCount);
        g.text(prompt, cx, playArea.y + 30, TextSize::Normal, palette::gold, true, true);
    }
    instructionLine(g, playArea, "REPEAT THE FLASHES IN ORDER, FROM MEMORY");
}

// --------------------------------------------------------------- Memory

void MemoryLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    rng = &engine;
    const bool small = number < 24;
    columns = small ? 5 : 6;
    cardCount = small ? 10 : 12;
    placementColumns = columns;
    rows = 2;
    const int gridWidth = small ? 480 : 576;
    const int x0 = area.x + (area.w - gridWidth + 12) / 2;
    const int y0 = area.y + 30;
    for (int i = 0; i < cardCount; ++i) {
        cards[i] = Rect{x0 + (i % placementColumns) * 96, y0 + (i / placementColumns) * 96, 84, 84};
        pairValue[i] = i / 2;
        dealOrder[i] = i;
    }
    std::fill(std::begin(revealed), std::end(revealed), false);
    std::fill(std::begin(matched), std::end(matched), false);
    std::vector<std::int32_t> deal(dealOrder, dealOrder + cardCount);
    shuffle(engine, deal);
    std::copy(deal.begin(), deal.end(), dealOrder);
    firstPick = -1;
    peeked = false;
    mismatchTimer = 0.0;
}

LevelResult MemoryLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    if (mismatchTimer > 0.0) {
        // A wrong pair stays up for a moment to be memorised; clicks meanwhile
        // are lost.
        mismatchTimer -= dt;
        if (mismatchTimer <= 0.0) {
            for (int c = 0; c < cardCount; ++c) {
                if (revealed[c] && !matched[c]) {
                    revealed[c] = false;
                }
            }
            firstPick = -1;
        }
        return LevelResult::Running;
    }
    if (!in.mousePressed) {
        return LevelResult::Running;
    }
    int card = -1;
    for (int pos = 0; pos < cardCount; ++pos) {
        const int c = dealOrder[pos];
        if (contains(cards[pos], in.mouseX, in.mouseY) && !revealed[c] && !matched[c]) {
            card = c;
            break;
        }
    }
    if (card < 0) {
        return LevelResult::Running;
    }
    revealed[card] = true;
    audio.playClick();
    if (!peeked) {
        // The tidy-up: every card still face down changes place, once. The
        // card just turned stays where it is, so it is the only thing worth
        // remembering from before this moment.
        peeked = true;
        std::vector<std::int32_t> positions;
        std::vector<std::int32_t> deck;
        for (int pos = 0; pos < cardCount; ++pos) {
            const int c = dealOrder[pos];
            if (!revealed[c] && !matched[c]) {
                positions.push_back(pos);
                deck.push_back(c);
            }
        }
        shuffle(*rng, deck);
        for (std::size_t i = 0; i < positions.size(); ++i) {
            dealOrder[positions[i]] = deck[i];
        }
    }
    if (firstPick < 0) {
        firstPick = card;
        return LevelResult::Running;
    }
    if (pairValue[firstPick] != pairValue[card]) {
        mismatchTimer = 0.6;
        return LevelResult::Running;
    }
    matched[firstPick] = true;
    matched[card] = true;
    audio.playClick();
    firstPick = -1;
    if (std::all_of(matched, matched + cardCount, [](bool m) { return m; })) {
        audio.playPass();
        return LevelResult::Solved;
    }
    return LevelResult::Running;
}

void MemoryLevel::render(Graphics& g) {
    for (int pos = 0; pos < cardCount; ++pos) {
        const Rect& r = cards[pos];
        const int c = dealOrder[pos];
        if (matched[c]) {
            g.roundRect(r, 8, palette::deepGreen, true);
        } else if (revealed[c]) {
            g.roundRect(r, 8, palette::litBrass, true);
            char label[16];
            Graphics::formatInto(label, sizeof label, "%d", pairValue[c] + 1);
            g.text(label, r.x + r.w / 2, r.y + r.h / 2, TextSize::Large, palette::ink, true, true);
        } else {
            g.roundRect(r, 8, palette::darkBrass, true);
            g.rect(Rect{r.x + 8, r.y + 8, r.w - 16, r.h - 16}, palette::ink, true);
        }
    }
    instructionLine(g, playArea, "PAIRS RESHUFFLE AFTER THE FIRST FLIP");
}

// ---------------------------------------------------------------- Morse

void MorseLevel::setup(const LevelDef& def, Rng& engine, const Rect& area) {
    Level::setup(def, engine, area);
    symbolCount = 4;
    for (int i = 0; i < 4; ++i) {
        symbols[i] = static_cast<std::int32_t>(rawDraw(engine) & 1u);
    }
    key = Rect{area.x + area.w / 2 - 70, area.y + area.h / 2 + 10, 140, 80};
    lamp = Rect{area.x + area.w / 2 - 30, area.y + 40, 60, 60};
    inputIndex = 0;
    shownIndex = 0;
    pressTime = 0.0;
    showing = true;
    lampOn = false;
    pressing = false;
    showTimer = 0.0;
}

LevelResult MorseLevel::update(double dt, const InputState& in, AudioSystem& audio) {
    if (showing) {
        // One symbol per 0.9 s: the lamp burns 0.6 s for a long one and
        // 0.2 s for a short one, then rests until the next slot.
        showTimer += dt;
        const int k = shownIndex;
        const double t = showTimer - k * 0.9;
        const double burn = symbols[k] == 1 ? 0.6 : 0.2;
        lampOn = t > 0.0 && t < burn;
        if (showTimer > (k + 1) * 0.9) {
            shownIndex = k + 1;
            if (shownIndex >= symbolCount) {
                showing = false;
                lampOn = false;
            }
        }
        return LevelResult::Running;
    }
    // A press has to start on the key; one that starts beside it and slides
    // on is not a keying at all.
    if (in.mousePressed && contains(key, in.mouseX, in.mouseY)) {
        pressTime = 0.0;
        pressing = true;
    }
    if (pressing && in.mouseDown) {
        pressTime += dt;
    }
    if (in.mouseReleased && pressing) {
        pressing = false;
        const int keyed = pressTime > 0.35 ? 1 : 0;   // exactly 0.35 s is still short
        if (keyed != symbols[inputIndex]) {
            audio.playFail();
            return LevelResult::Failed;
        }
        audio.playClick();
        ++inputIndex;
        if (inputIndex >= symbolCount) {
            audio.playPass();
            return LevelResult::Solved;
        }
    }
    return LevelResult::Running;
}

void MorseLevel::render(Graphics& g) {
    g.circle(lamp.x + 30, lamp.y + 30, 28, lampOn ? palette::gold : palette::charcoal, true);
    const int cx = playArea.x + playArea.w / 2;
    if (showing) {
        g.text("WATCH", cx, lamp.y + 90, TextSize::Small, palette::terminalGreen, true, false);
    } else {
        char status[32];
        Graphics::formatInto(status, sizeof status, "SYMBOL %d / %d", inputIndex + 1, symbolCount);
        g.text(status, cx, lamp.y + 90, TextSize::Small, palette::terminalGreen, true, false);
    }
    g.roundRect(key, 10, pressing ? palette::darkGreen : palette::oldBrass, true);
    g.text("KEY (tap=short, hold=long)", key.x + key.w / 2, key.y + key.h / 2, TextSize::Small,
           palette::ink, true, true);
    instructionLine(g, playArea, "MIRROR THE LAMP'S BLINKS");
}

}  // namespace vorn
