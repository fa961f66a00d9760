#include "asset_music.h"

#include "music_kit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vorn::tools {

namespace {

using namespace music;

// ---- harmony ---------------------------------------------------------------

using Scale = std::array<int, 7>;
constexpr Scale kMinor{0, 2, 3, 5, 7, 8, 10};
constexpr Scale kDorian{0, 2, 3, 5, 7, 9, 10};
constexpr Scale kMajor{0, 2, 4, 5, 7, 9, 11};

int floorDiv(int a, int b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }

// A scale step (seven to the octave, 0 the tonic, negative below it) as a
// MIDI note.
int pitchOf(int step, int tonic, const Scale& scale) {
    const int octave = floorDiv(step, 7);
    return tonic + 12 * octave + scale[static_cast<std::size_t>(step - 7 * octave)];
}

// The chord tone nearest to `step` of the seventh chord on `degree`.
int nearestChordTone(int step, int degree, bool withSeventh) {
    int best = degree;
    for (int octave = -3; octave <= 3; ++octave) {
        for (int tone : {0, 2, 4, 6}) {
            if (tone == 6 && !withSeventh) {
                continue;
            }
            const int candidate = degree + tone + 7 * octave;
            if (std::abs(candidate - step) < std::abs(best - step)) {
                best = candidate;
            }
        }
    }
    return best;
}

// ---- the score ---------------------------------------------------------------

enum class Part { intro, a, b, bridge, ending };

struct Section {
    Part part;
    int bars;
    int take;   // how often this part has come round before: the variation grows with it
};

struct Note {
    double beat;     // from the start of the piece
    double length;   // beats
    int step;        // scale step of the melody
    double level;
};

// A one-bar idea: onsets in sixteenths with their lengths, and the melodic
// shape as steps from its first note.
struct Motif {
    std::vector<int> onsets;
    std::vector<int> lengths;
    std::vector<int> shape;
};

// Rhythm cells a motif is cut from: each fills a bar in sixteenths.
const std::array<std::vector<int>, 8> kCells{{
    {0, 4, 6, 8, 12},
    {0, 3, 6, 10, 12},
    {0, 2, 4, 8, 11, 14},
    {2, 4, 7, 8, 12},
    {0, 6, 8, 10, 12, 14},
    {0, 4, 8, 10},
    {0, 3, 4, 8, 12, 14},
    {0, 2, 6, 8, 10, 13},
}};

Motif makeMotif(Dice& dice) {
    Motif m;
    m.onsets = kCells[static_cast<std::size_t>(dice.below(static_cast<int>(kCells.size())))];
    int at = 0;
    static constexpr std::array<int, 9> kMoves{1, 1, 2, -1, -1, -2, 3, -3, 0};
    for (std::size_t i = 0; i < m.onsets.size(); ++i) {
        const int next = i + 1 < m.onsets.size() ? m.onsets[i + 1] : 16;
        m.lengths.push_back(std::max(1, next - m.onsets[i]));
        m.shape.push_back(at);
        at += kMoves[static_cast<std::size_t>(dice.below(static_cast<int>(kMoves.size())))];
        at = std::clamp(at, -4, 5);
    }
    return m;
}

// The answer keeps the rhythm's feel but turns the shape upside down.
Motif answerTo(const Motif& m, Dice& dice) {
    Motif a = makeMotif(dice);
    for (std::size_t i = 0; i < a.shape.size(); ++i) {
        a.shape[i] = -m.shape[std::min(i, m.shape.size() - 1)];
    }
    return a;
}

struct Song;

// Writes a four-bar phrase into `out`: the motif, the motif again from the
// next chord, the answer, and a cadence that lands long on a chord tone.
// Strong beats always land on tones of the bar's chord. `take` > 0 varies it.
void phrase(const Song& song, const std::vector<int>& chords, int firstBar, const Motif& motif,
            const Motif& answer, int home, bool closes, int take, Dice& dice, std::vector<Note>& out);

// ---- songs -------------------------------------------------------------------

enum class Groove { office, breaks, drive, brushes };
enum class Lead { saw, pulse, bell };
enum class Keys { epiano, pad, stabs };

struct Song {
    const char* file;
    int bpm;
    double swing;           // how late the off-beat sixteenths fall, as a share of a sixteenth
    int tonic;              // MIDI note of the tonic in the melody's octave
    Scale scale;
    std::vector<int> verse;     // one chord degree a bar
    std::vector<int> chorus;
    std::vector<int> bridge;
    std::vector<Section> form;
    Groove groove;
    Lead lead;
    Keys keys;
    std::uint32_t seed;
    bool loops;
};

int beatsPerBar() { return 4; }

void phrase(const Song& song, const std::vector<int>& chords, int firstBar, const Motif& motif,
            const Motif& answer, int home, bool closes, int take, Dice& dice, std::vector<Note>& out) {
    int last = home;
    for (int bar = 0; bar < 4; ++bar) {
        const int degree = chords[static_cast<std::size_t>(bar) % chords.size()];
        const Motif& idea = bar == 2 ? answer : motif;
        const int anchor = nearestChordTone(bar == 0 ? home : last, degree, false);
        const double barBeat = static_cast<double>((firstBar + bar) * beatsPerBar());
        std::size_t count = idea.onsets.size();
        if (bar == 3) {
            count = std::min<std::size_t>(count, 2);   // the cadence: a short pickup, then a long note
        }
        for (std::size_t i = 0; i < count; ++i) {
            int onset = idea.onsets[i];
            int length = idea.lengths[i];
            int step = anchor + idea.shape[i];
            if (onset % 8 == 0) {
                step = nearestChordTone(step, degree, true);
            }
            // Variations for the parts that come back: a neighbour note
            // slipped in, a note moved, a repeated note broken up.
            if (take > 0 && onset % 4 != 0 && dice.chance(0.25 + 0.1 * take)) {
                step += dice.chance(0.5) ? 1 : -1;
            }
            if (take > 0 && length >= 4 && dice.chance(0.35)) {
                out.push_back(Note{barBeat + onset / 4.0, 0.5, step + 1, 0.7});
                onset += 2;
                length -= 2;
            }
            if (bar == 3 && i + 1 == count) {
                const int target = closes ? 0 : degree;
                step = nearestChordTone(step, target, false);
                length = 16 - onset;
            }
            const double accent = onset % 4 == 0 ? 0.95 : 0.75;
            out.push_back(Note{barBeat + onset / 4.0, length / 4.0, step, accent * (0.9 + 0.2 * dice.unit())});
            last = step;
        }
    }
    (void)song;
}

// ---- performance -------------------------------------------------------------

struct Player {
    const Song& song;
    Bus& bus;
    double beat;   // seconds

    double time(double beats) const {
        // Swing: the second and fourth sixteenth of every beat come late.
        const double whole = std::floor(beats * 4.0 + 1e-9);
        const bool off = static_cast<int>(whole) % 2 == 1 && std::abs(beats * 4.0 - whole) < 1e-6;
        return (beats + (off ? song.swing * 0.25 : 0.0)) * beat;
    }
};

std::vector<int> chordNotes(const Song& song, int degree, int around, bool seventh) {
    std::vector<int> notes;
    for (int tone : {0, 2, 4, 6}) {
        if (tone == 6 && !seventh) {
            continue;
        }
        int note = pitchOf(degree + tone, song.tonic - 12, song.scale);
        while (note < around - 6) {
            note += 12;
        }
        while (note > around + 6) {
            note -= 12;
        }
        notes.push_back(note);
    }
    std::sort(notes.begin(), notes.end());
    return notes;
}

void playLead(const Player& p, const std::vector<Note>& notes, int octave, double level, const Placement& at) {
    for (const Note& n : notes) {
        const double note = pitchOf(n.step, p.song.tonic, p.song.scale) + 12.0 * octave;
        const double start = p.time(n.beat);
        const double held = n.length * p.beat * 0.9;
        const double v = level * n.level;
        switch (p.song.lead) {
        case Lead::saw:
            sawVoice(p.bus, start, held, note, v * 0.7, 3200.0, 1400.0, 0.3, 0.3, 0.005, at);
            break;
        case Lead::pulse:
            pulseVoice(p.bus, start, held, note, v * 0.6, 0.25, 5000.0, 0.006, at);
            break;
        case Lead::bell:
            fmVoice(p.bus, start, held, note, v * 0.55, 3.5, 1.6, 0.9, at);
            break;
        }
    }
}

// The chords of one bar, in the song's keyboard part.
void playKeys(const Player& p, int bar, int degree, int next, double level, int take, Dice& dice, bool ending) {
    const double bb = bar * 4.0;
    const std::vector<int> notes = chordNotes(p.song, degree, 60 + (take % 2) * 3, true);
    switch (p.song.keys) {
    case Keys::pad:
        padVoice(p.bus, p.time(bb), 4.0 * p.beat * (ending ? 3.0 : 1.0), notes, level * 0.5, 1400.0, 0.4,
                 Placement{0.0, 0.6, 0.0});
        break;
    case Keys::epiano: {
        // Comping: the chord on one, a push before three, the next chord's
        // third anticipated now and then.
        static constexpr std::array<std::array<int, 3>, 4> kComps{{{0, 6, 10}, {0, 7, 12}, {2, 6, 10}, {0, 10, 14}}};
        const auto& comp = kComps[static_cast<std::size_t>(dice.below(4))];
        for (std::size_t h = 0; h < comp.size(); ++h) {
            const double held = ending ? 12.0 : (h + 1 < comp.size() ? comp[h + 1] - comp[h] : 16 - comp[h]) / 4.0;
            const std::vector<int>& chord =
                h == 2 && dice.chance(0.3) ? chordNotes(p.song, next, 60, true) : notes;
            for (std::size_t n = 0; n < chord.size(); ++n) {
                const double pan = -0.5 + static_cast<double>(n) / 3.0;
                fmVoice(p.bus, p.time(bb + comp[h] / 4.0) + 0.006 * static_cast<double>(n), held * p.beat * 0.95,
                        chord[n], level * 0.22 * (0.85 + 0.3 * dice.unit()), 1.0, 1.2, 1.4,
                        Placement{pan, 0.4, 0.1});
            }
            if (ending) {
                break;
            }
        }
        padVoice(p.bus, p.time(bb), 4.0 * p.beat * (ending ? 3.0 : 1.0), notes, level * 0.18, 900.0, 0.3,
                 Placement{0.0, 0.5, 0.0});
        break;
    }
    case Keys::stabs:
        for (int s : {0, 3, 6, 10, 12}) {
            if (s != 0 && dice.chance(0.25)) {
                continue;
            }
            for (std::size_t n = 0; n < notes.size(); ++n) {
                sawVoice(p.bus, p.time(bb + s / 4.0), (ending ? 8.0 : 0.35) * p.beat, notes[n],
                         level * 0.14 * (0.85 + 0.3 * dice.unit()), 4200.0, 500.0, 0.09, 0.2, 0.0,
                         Placement{n % 2 == 0 ? -0.45 : 0.45, 0.3, 0.25});
            }
            if (ending) {
                break;
            }
        }
        padVoice(p.bus, p.time(bb), 4.0 * p.beat * (ending ? 3.0 : 1.0), notes, level * 0.2, 1100.0, 0.5,
                 Placement{0.0, 0.6, 0.0});
        break;
    }
}

void playBass(const Player& p, int bar, int degree, int next, double level, Dice& dice, bool busy) {
    const double bb = bar * 4.0;
    const int root = pitchOf(degree, p.song.tonic - 24, p.song.scale);
    const int fifth = pitchOf(degree + 4, p.song.tonic - 24, p.song.scale);
    const int nextRoot = pitchOf(next, p.song.tonic - 24, p.song.scale);
    const Placement centre{0.0, 0.02, 0.0};
    static constexpr std::array<std::array<int, 6>, 3> kLines{{{0, 3, 6, 8, 11, 14}, {0, 4, 7, 8, 10, 14},
                                                              {0, 2, 6, 8, 12, 14}}};
    const auto& line = kLines[static_cast<std::size_t>(dice.below(3))];
    const std::size_t hits = busy ? line.size() : 3;
    for (std::size_t h = 0; h < hits; ++h) {
        const int s = busy ? line[h] : static_cast<int>(h) * 6;
        int note = root;
        if (s == 14) {
            // Walk into the next chord from a step below or above.
            note = nextRoot + (dice.chance(0.5) ? -1 : (nextRoot > root ? -2 : 2));
        } else if (s == 8 && dice.chance(0.4)) {
            note = fifth;
        } else if (s % 4 == 2 && dice.chance(0.5)) {
            note = root + 12;
        }
        const int end = h + 1 < hits ? (busy ? line[h + 1] : static_cast<int>(h + 1) * 6) : 16;
        bassVoice(p.bus, p.time(bb + s / 4.0), (end - s) / 4.0 * p.beat * 0.85, note,
                  level * (s % 8 == 0 ? 0.55 : 0.45) * (0.9 + 0.2 * dice.unit()), busy ? 0.7 : 0.3, centre);
    }
}

// One bar of drums. `fill` ends a phrase, `crash` opens a section.
void playDrums(const Player& p, int bar, double level, bool sparse, bool fill, bool crash, Dice& dice) {
    const double bb = bar * 4.0;
    const Placement snareAt{0.05, 0.35, 0.0};
    const Placement hatAt{0.35, 0.12, 0.0};
    const auto at = [&](int sixteenth) { return p.time(bb + sixteenth / 4.0); };
    const auto human = [&](double v) { return level * v * (0.85 + 0.3 * dice.unit()); };
    if (crash) {
        cymbal(p.bus, at(0), human(0.3), dice, Placement{-0.4, 0.4, 0.0});
    }
    const int lastPlain = fill ? 8 : 16;
    for (int s = 0; s < lastPlain; ++s) {
        bool kick = false;
        bool snare = false;
        double hat = 0.0;
        switch (p.song.groove) {
        case Groove::office:   // four on the floor, claps on two and four
            kick = s % 4 == 0 && !(sparse && s % 8 != 0);
            snare = s == 4 || s == 12;
            hat = s % 4 == 2 ? 0.5 : (s % 2 == 1 ? 0.15 : 0.0);
            break;
        case Groove::breaks:   // a broken beat, ghost notes round the backbeat
            kick = s == 0 || s == 10 || (s == 7 && dice.chance(0.5)) || (s == 14 && dice.chance(0.3));
            snare = s == 4 || s == 12;
            hat = s % 2 == 0 ? (s % 4 == 0 ? 0.45 : 0.3) : 0.0;
            if (!snare && (s == 7 || s == 15) && dice.chance(0.5)) {
                snareDrum(p.bus, at(s), human(0.12), dice, snareAt);
            }
            break;
        case Groove::drive:   // driving eighths
            kick = s == 0 || s == 8 || s == 6 || (s == 11 && dice.chance(0.5));
            snare = s == 4 || s == 12;
            hat = s % 2 == 0 ? 0.4 : 0.12;
            break;
        case Groove::brushes:   // the title: a soft kick, rim and brushes
            kick = s == 0 || (s == 10 && dice.chance(0.6));
            if (s == 4 || s == 12) {
                rimShot(p.bus, at(s), human(0.12), Placement{-0.2, 0.4, 0.1});
            }
            hat = s % 2 == 0 ? 0.22 : 0.08;
            break;
        }
        if (kick && !(sparse && s != 0)) {
            kickDrum(p.bus, at(s), human(0.8), p.song.groove == Groove::brushes ? 0.6 : 1.0);
        }
        if (snare && !sparse) {
            if (p.song.groove == Groove::office) {
                clap(p.bus, at(s), human(0.45), dice, snareAt);
            } else {
                snareDrum(p.bus, at(s), human(0.5), dice, snareAt);
            }
        }
        if (hat > 0.0) {
            const bool open = s % 4 == 2 && dice.chance(0.15);
            hiHat(p.bus, at(s), human(hat * 0.35), open ? 0.09 : 0.018, dice, hatAt);
        }
    }
    if (!fill) {
        return;
    }
    // Fills: a snare roll swelling up, or toms falling round the kit.
    const int kind = dice.below(3);
    for (int s = 8; s < 16; ++s) {
        const double swell = 0.4 + 0.6 * (s - 8) / 7.0;
        if (kind == 0) {
            snareDrum(p.bus, at(s), human(0.4 * swell), dice, snareAt);
        } else if (kind == 1) {
            if (s % 2 == 0 || s > 12) {
                tom(p.bus, at(s), human(0.55), 190.0 - 12.0 * (s - 8), Placement{0.5 - 0.14 * (s - 8), 0.3, 0.0});
            }
        } else {
            if (s == 8 || s == 11 || s == 14) {
                kickDrum(p.bus, at(s), human(0.7), 1.0);
            } else {
                snareDrum(p.bus, at(s), human(0.35 * swell), dice, snareAt);
            }
        }
    }
}

// An arpeggio in sixteenths over the bar's chord, bouncing on the echo.
void playArpeggio(const Player& p, int bar, int degree, double level, Dice& dice) {
    const double bb = bar * 4.0;
    const std::vector<int> notes = chordNotes(p.song, degree, 72, true);
    static constexpr std::array<std::array<int, 8>, 3> kOrders{
        {{0, 1, 2, 3, 2, 1, 0, 2}, {0, 2, 1, 3, 0, 2, 3, 1}, {3, 2, 1, 0, 1, 2, 3, 2}}};
    const auto& order = kOrders[static_cast<std::size_t>(dice.below(3))];
    for (int s = 0; s < 16; ++s) {
        const int note = notes[static_cast<std::size_t>(order[static_cast<std::size_t>(s % 8)]) % notes.size()];
        pulseVoice(p.bus, p.time(bb + s / 4.0), 0.18 * p.beat, note + (s >= 8 && dice.chance(0.2) ? 12 : 0),
                   level * 0.16 * (s % 4 == 0 ? 1.0 : 0.7), 0.125, 3000.0 + 1500.0 * std::sin(bar * 0.7), 0.0,
                   Placement{-0.55, 0.25, 0.45});
    }
}

// Composes and plays the whole song into a bus.
Bus perform(const Song& song) {
    const int beatSamples = kRate * 60 / song.bpm;
    const double beat = static_cast<double>(beatSamples) / kRate;
    int bars = 0;
    for (const Section& s : song.form) {
        bars += s.bars;
    }
    const std::size_t body = static_cast<std::size_t>(bars) * 4 * static_cast<std::size_t>(beatSamples);
    // A song with an ending gets room for its last chord to ring out.
    Bus bus(song.loops ? body : body + static_cast<std::size_t>(3.5 * kRate), song.loops, beat * 0.75);
    const Player player{song, bus, beat};

    Dice dice(song.seed);
    const Motif verseMotif = makeMotif(dice);
    const Motif verseAnswer = answerTo(verseMotif, dice);
    const Motif chorusMotif = makeMotif(dice);
    const Motif chorusAnswer = answerTo(chorusMotif, dice);
    const Motif bridgeMotif = makeMotif(dice);

    int bar = 0;
    for (std::size_t si = 0; si < song.form.size(); ++si) {
        const Section& sec = song.form[si];
        const std::vector<int>& chords =
            sec.part == Part::b ? song.chorus : (sec.part == Part::bridge ? song.bridge : song.verse);
        std::vector<Note> melody;
        std::vector<Note> counter;
        if (sec.part == Part::a || sec.part == Part::b || sec.part == Part::bridge) {
            for (int ph = 0; ph + 4 <= sec.bars; ph += 4) {
                const bool closes = ph + 4 == sec.bars;
                if (sec.part == Part::bridge) {
                    // The bridge thins out to long notes: the motif at half speed.
                    Motif slow = bridgeMotif;
                    slow.onsets = {0, 8};
                    slow.lengths = {8, 8};
                    slow.shape = {0, bridgeMotif.shape.size() > 1 ? bridgeMotif.shape[1] : 2};
                    phrase(song, chords, bar + ph, slow, slow, 2, closes, sec.take + ph / 4, dice, melody);
                } else {
                    const bool chorus = sec.part == Part::b;
                    phrase(song, chords, bar + ph, chorus ? chorusMotif : verseMotif,
                           chorus ? chorusAnswer : verseAnswer, chorus ? 5 : 2, closes, sec.take * 2 + ph / 4, dice,
                           melody);
                }
            }
            if (sec.take > 0) {
                // On its return a part gains a counter-line: long chord tones
                // a third or sixth under the tune.
                for (const Note& n : melody) {
                    if (std::fmod(n.beat, 2.0) < 1e-6) {
                        counter.push_back(Note{n.beat, 1.8, n.step - (dice.chance(0.5) ? 2 : 5), 0.7});
                    }
                }
            }
        }
        const bool quiet = sec.part == Part::intro || sec.part == Part::bridge;
        playLead(player, melody, 0, quiet ? 0.7 : 1.0, Placement{0.12, 0.3, 0.3});
        for (const Note& n : counter) {
            fmVoice(bus, player.time(n.beat), n.length * beat, pitchOf(n.step, song.tonic, song.scale) - 12.0,
                    0.16 * n.level, 2.0, 0.8, 1.2, Placement{-0.45, 0.45, 0.1});
        }

        for (int b = 0; b < sec.bars; ++b) {
            const int abs = bar + b;
            const bool ending = sec.part == Part::ending;
            const bool finalChord = ending && b == sec.bars - 2;
            if (ending && b > sec.bars - 2) {
                break;   // the last chord rings through the final bars
            }
            const int degree = ending ? (finalChord ? 0 : chords[static_cast<std::size_t>(b + 2) % chords.size()])
                                      : chords[static_cast<std::size_t>(b) % chords.size()];
            const int next = chords[static_cast<std::size_t>(b + 1) % chords.size()];
            const double fade = sec.part == Part::intro ? 0.5 + 0.5 * b / std::max(1, sec.bars - 1) : 1.0;
            playKeys(player, abs, degree, next, fade, sec.take + b, dice, finalChord);
            if (!(sec.part == Part::intro && b < sec.bars / 2)) {
                if (finalChord) {
                    bassVoice(bus, player.time(abs * 4.0), 6.0 * beat, pitchOf(0, song.tonic - 24, song.scale), 0.55,
                              0.4, Placement{});
                } else {
                    playBass(player, abs, degree, next, 1.0, dice, sec.part != Part::bridge);
                }
            }
            const bool phraseEnd = (b % 4 == 3) && !ending && !(sec.part == Part::intro && b + 1 < sec.bars);
            const bool opens = b == 0 && sec.part != Part::intro;
            if (finalChord) {
                kickDrum(bus, player.time(abs * 4.0), 0.8, 1.0);
                cymbal(bus, player.time(abs * 4.0), 0.35, dice, Placement{0.3, 0.5, 0.0});
            } else {
                playDrums(player, abs, sec.part == Part::intro ? 0.6 : 1.0,
                          sec.part == Part::intro || sec.part == Part::bridge, phraseEnd && dice.chance(0.8), opens,
                          dice);
            }
            if ((sec.part == Part::b || sec.part == Part::bridge || (sec.part == Part::a && sec.take > 0)) &&
                !finalChord) {
                playArpeggio(player, abs, degree, sec.part == Part::bridge ? 1.0 : 0.7, dice);
            }
        }
        bar += sec.bars;
    }
    bus.finish();
    return bus;
}

// ---- mastering --------------------------------------------------------------

// Biquad for the loudness measure's K-weighting.
struct Biquad {
    double b0, b1, b2, a1, a2;
    double z1 = 0.0, z2 = 0.0;
    double operator()(double x) {
        const double y = b0 * x + z1;
        z1 = b1 * x - a1 * y + z2;
        z2 = b2 * x - a2 * y;
        return y;
    }
};

// Brings every sample (and the peaks between samples, estimated by cubic
// interpolation) under `ceiling` with a look-ahead gain that falls before a
// peak and recovers over 80 ms after it. A looping piece is treated as the
// circle it is, so the gain has no step at the loop point.
void limit(std::vector<float>& left, std::vector<float>& right, double ceiling, bool loops) {
    const std::size_t n = left.size();
    std::vector<double> gain(n, 1.0);
    const auto sample = [&](const std::vector<float>& ch, std::size_t i, long d) {
        const long j = static_cast<long>(i) + d;
        if (loops) {
            return static_cast<double>(ch[static_cast<std::size_t>((j + static_cast<long>(n)) % static_cast<long>(n))]);
        }
        return j < 0 || j >= static_cast<long>(n) ? 0.0 : static_cast<double>(ch[static_cast<std::size_t>(j)]);
    };
    for (std::size_t i = 0; i < n; ++i) {
        double peak = 0.0;
        for (const std::vector<float>* ch : {&left, &right}) {
            const double y0 = sample(*ch, i, -1), y1 = sample(*ch, i, 0), y2 = sample(*ch, i, 1),
                         y3 = sample(*ch, i, 2);
            peak = std::max(peak, std::abs(y1));
            if (std::abs(y1) > 0.3 * ceiling) {
                for (double t : {0.25, 0.5, 0.75}) {
                    const double v = y1 + 0.5 * t *
                                              (y2 - y0 + t * (2.0 * y0 - 5.0 * y1 + 4.0 * y2 - y3 +
                                                              t * (3.0 * (y1 - y2) + y3 - y0)));
                    peak = std::max(peak, std::abs(v));
                }
            }
        }
        if (peak > ceiling) {
            gain[i] = ceiling / peak;
        }
    }
    const double attack = 1.0 / (0.002 * kRate);
    const double release = 1.0 / (0.08 * kRate);
    const std::size_t laps = loops ? 2 : 1;
    for (std::size_t lap = 0; lap < laps; ++lap) {
        for (std::size_t k = n; k-- > 0;) {
            const std::size_t after = k + 1 < n ? k + 1 : (loops ? 0 : k);
            gain[k] = std::min(gain[k], gain[after] + attack);
        }
    }
    for (std::size_t lap = 0; lap < laps; ++lap) {
        for (std::size_t k = 0; k < n; ++k) {
            const std::size_t before = k > 0 ? k - 1 : (loops ? n - 1 : k);
            gain[k] = std::min(gain[k], gain[before] + release);
        }
    }
    for (std::size_t k = 0; k < n; ++k) {
        left[k] = static_cast<float>(left[k] * gain[k]);
        right[k] = static_cast<float>(right[k] * gain[k]);
    }
}

void scale(std::vector<float>& samples, double factor) {
    for (float& s : samples) {
        s = static_cast<float>(s * factor);
    }
}

// Every piece plays at the same loudness, with its peaks safely under full
// scale even after lossy encoding.
void master(StereoPiece& piece, bool loops) {
    constexpr double kTarget = -16.0;
    constexpr double kCeiling = 0.70;   // -3.1 dBFS: room for the encoders' own overshoot
    for (int round = 0; round < 3; ++round) {
        const double loudness = integratedLoudness(piece.left, piece.right, piece.rate);
        const double factor = std::pow(10.0, (kTarget - loudness) / 20.0);
        scale(piece.left, factor);
        scale(piece.right, factor);
        limit(piece.left, piece.right, kCeiling, loops);
    }
}

StereoPiece render(const Song& song) {
    Bus bus = perform(song);
    StereoPiece piece;
    piece.file = song.file;
    piece.left = std::move(bus.left);
    piece.right = std::move(bus.right);
    if (!song.loops) {
        // The ending's tail fades to true silence.
        const std::size_t fade = static_cast<std::size_t>(1.5 * kRate);
        const std::size_t n = piece.left.size();
        for (std::size_t i = 0; i < fade; ++i) {
            const double g = static_cast<double>(i) / static_cast<double>(fade);
            piece.left[n - 1 - i] = static_cast<float>(piece.left[n - 1 - i] * g);
            piece.right[n - 1 - i] = static_cast<float>(piece.right[n - 1 - i] * g);
        }
    }
    master(piece, song.loops);
    return piece;
}

}  // namespace

double integratedLoudness(const std::vector<float>& left, const std::vector<float>& right, int rate) {
    // K-weighting: a high shelf (+4 dB above ~1.7 kHz) then a high-pass at
    // ~38 Hz, both designed for the given rate.
    const auto shelf = [rate]() {
        const double f0 = 1681.974450955533, gainDb = 3.999843853973347, q = 0.7071752369554196;
        const double k = std::tan(3.14159265358979 * f0 / rate);
        const double vh = std::pow(10.0, gainDb / 20.0);
        const double vb = std::pow(vh, 0.4996667741545416);
        const double a0 = 1.0 + k / q + k * k;
        return Biquad{(vh + vb * k / q + k * k) / a0, 2.0 * (k * k - vh) / a0, (vh - vb * k / q + k * k) / a0,
                      2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    };
    const auto highPass = [rate]() {
        const double f0 = 38.13547087602444, q = 0.5003270373238773;
        const double k = std::tan(3.14159265358979 * f0 / rate);
        const double a0 = 1.0 + k / q + k * k;
        return Biquad{1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / q + k * k) / a0};
    };
    const std::size_t step = static_cast<std::size_t>(rate) / 10;   // 100 ms; blocks are four steps
    std::vector<double> stepPower;
    Biquad sl = shelf(), hl = highPass(), sr = shelf(), hr = highPass();
    double sum = 0.0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const double l = hl(sl(left[i]));
        const double r = hr(sr(right[i]));
        sum += l * l + r * r;
        if ((i + 1) % step == 0) {
            stepPower.push_back(sum / static_cast<double>(step));
            sum = 0.0;
        }
    }
    std::vector<double> blocks;
    for (std::size_t b = 0; b + 4 <= stepPower.size(); ++b) {
        blocks.push_back((stepPower[b] + stepPower[b + 1] + stepPower[b + 2] + stepPower[b + 3]) / 4.0);
    }
    const auto lufs = [](double power) { return -0.691 + 10.0 * std::log10(std::max(power, 1e-20)); };
    const auto gatedMean = [&](double gate) {
        double total = 0.0;
        int count = 0;
        for (double p : blocks) {
            if (lufs(p) > gate) {
                total += p;
                ++count;
            }
        }
        return count > 0 ? total / count : 0.0;
    };
    const double relative = lufs(gatedMean(-70.0)) - 10.0;
    return lufs(gatedMean(std::max(-70.0, relative)));
}

std::vector<StereoPiece> composeMusic() {
    using P = Part;
    std::vector<Song> songs{
        // The title: an unhurried major-key tune for the employment terminal,
        // electric piano and bells over brushes. 98 BPM gives 27000 samples
        // a beat, so the sixteen bars loop on a sample boundary.
        {"vorn-title.mp3", 98, 0.18, 72, kMajor, {0, 5, 3, 4}, {5, 3, 0, 4}, {}, 
         {{P::a, 8, 0}, {P::b, 8, 0}}, Groove::brushes, Lead::bell, Keys::epiano, 0x7171E001u, true},
        // Office funk: D dorian, four on the floor, stabs and a saw lead.
        {"shift-01.ogg", 126, 0.12, 62, kDorian, {0, 3, 0, 4}, {5, 6, 3, 4}, {2, 5, 1, 4},
         {{P::intro, 4, 0}, {P::a, 8, 0}, {P::b, 8, 0}, {P::a, 8, 1}, {P::bridge, 8, 0}, {P::b, 8, 1},
          {P::a, 8, 2}, {P::ending, 4, 0}},
         Groove::office, Lead::saw, Keys::stabs, 0x5A1F7101u, false},
        // Broken beats in A minor under a pad, the electric piano's bells on top.
        {"shift-02.ogg", 100, 0.2, 69, kMinor, {0, 5, 2, 6}, {3, 4, 0, 0}, {5, 3, 6, 4},
         {{P::intro, 4, 0}, {P::a, 8, 0}, {P::b, 8, 0}, {P::bridge, 8, 0}, {P::a, 8, 1}, {P::b, 8, 1},
          {P::ending, 4, 0}},
         Groove::breaks, Lead::bell, Keys::pad, 0x5A1F7102u, false},
        // A chip-flavoured drive in E minor: pulse lead, arpeggios, eighths.
        {"shift-03.ogg", 140, 0.0, 64, kMinor, {0, 5, 3, 4}, {5, 6, 0, 0}, {3, 4, 5, 4},
         {{P::intro, 4, 0}, {P::a, 8, 0}, {P::b, 8, 0}, {P::a, 8, 1}, {P::bridge, 8, 0}, {P::b, 8, 1},
          {P::b, 8, 2}, {P::ending, 4, 0}},
         Groove::drive, Lead::pulse, Keys::epiano, 0x5A1F7103u, false},
    };
    std::vector<StereoPiece> pieces;
    for (const Song& song : songs) {
        pieces.push_back(render(song));
    }
    return pieces;
}

}  // namespace vorn::tools
