#include "gfx/screens.h"

#include "gfx/graphics.h"
#include "gfx/terminal.h"

#include <algorithm>
#include <cmath>

namespace vorn {

namespace {

constexpr int kCentreX = kCanvasWidth / 2;   // 683: every centred line hangs on it
constexpr int kCentreY = kCanvasHeight / 2;  // 384
constexpr int kLogoWidth = 956;
constexpr double kLogoFadeSeconds = 0.4;
constexpr double kCardFadeSeconds = 0.4;
constexpr double kCardSeconds = 3.0;

struct ShiftCardText {
    const char* heading;
    const char* subtitle;
};

constexpr ShiftCardText kShiftCards[] = {
    {"PROBATION", "Report to your station."},
    {"SHIFT STARTS", "Probation complete. The real work begins."},
    {"OVERTIME", "Clock's against you now. No mercy."},
};
constexpr std::int32_t kOvertimeCard = 2;

// The dark band across the top of the glass that the title and the station
// header share.
void drawHeaderBand(Graphics& g) {
    g.roundRect(kHeaderBand, 8, palette::darkPanel, true);
    g.roundRect(kHeaderBand, 8, palette::brass, false);
}

}  // namespace

void drawSplash(Graphics& g, SDL_Texture* logo, int logoW, int logoH, bool revealed,
                double sinceReveal) {
    if (!revealed) {
        return;
    }
    if (logo != nullptr && logoW > 0) {
        const double shown = std::min(sinceReveal / kLogoFadeSeconds, 1.0);
        SDL_SetTextureAlphaMod(logo, static_cast<Uint8>(static_cast<int>(shown * 255.0)));
        // Whatever size the logo file has, it fills the same 956 px.
        const double s = static_cast<double>(kLogoWidth) / logoW;
        g.blitCentered(logo, kCentreX, kCentreY, static_cast<int>(logoW * s),
                       static_cast<int>(logoH * s));
    } else {
        g.text("ZEMBRILUX", kCentreX, kCentreY, TextSize::Large, palette::casingBeige, true, true);
    }
}

double shiftCardFade(double t) {
    if (t < kCardFadeSeconds) {
        return t / kCardFadeSeconds;
    }
    if (t > kCardSeconds - kCardFadeSeconds) {
        return std::max((kCardSeconds - t) / kCardFadeSeconds, 0.0);
    }
    return 1.0;
}

void drawShiftCard(Graphics& g, std::int32_t phase, double t) {
    // An unknown phase reads as the first card, as it opens the first station.
    const std::int32_t card = phase >= 0 && phase <= kOvertimeCard ? phase : 0;
    const double f = shiftCardFade(t);
    // The fade is towards black: the colour dims, the alpha stays full.
    const Color heading = scaled(card == kOvertimeCard ? palette::alarmRed : palette::gold, f);
    g.text(kShiftCards[card].heading, kCentreX, 364, TextSize::Giant, heading, true, true);
    g.text(kShiftCards[card].subtitle, kCentreX, 432, TextSize::Normal, scaled(palette::brass, f),
           true, true);
}

void drawTitleTerminal(Graphics& g, const ProceduralArt& art, const MenuRowView* rows, int count,
                       int highlighted, long timesFired, int clockInCards, const char* build) {
    drawTerminal(g, art, palette::greenScreen);

    drawHeaderBand(g);
    g.text("// EMPLOYMENT TERMINAL v8.31 //", kCentreX, 132, TextSize::Normal,
           palette::terminalGreen, true, true);

    g.text("THE", kCentreX, 198, TextSize::Large, palette::gold, true, true);
    g.text("VORN", kCentreX, 253, TextSize::Giant, palette::gold, true, true);
    g.text("CO.", kCentreX, 303, TextSize::Huge, palette::gold, true, true);

    for (int i = 0; i < count; ++i) {
        const Rect row = titleMenuRow(i);
        if (i == highlighted) {
            g.roundRect(row, 6, palette::deepGreen, true);
            g.roundRect(row, 6, palette::terminalGreen, false);
        } else {
            g.roundRect(row, 6, palette::dimGreen, false);
        }
        g.text(rows[i].label, kCentreX, 369 + 46 * i, TextSize::Normal,
               rows[i].alarm ? palette::alarmRed : palette::terminalGreen, true, true);
    }

    char counts[96];
    Graphics::formatInto(counts, sizeof counts, "TIMES FIRED: %ld    CLOCK-IN CARDS: %d", timesFired,
                         clockInCards);
    g.text(counts, kCentreX, 660, TextSize::Small, palette::softGreen, true, true);
    // The build is set flush right against the header band's right edge.
    g.text(build, 1103 - g.textWidth(build, TextSize::Small), 664, TextSize::Small, palette::amber,
           false, false);
}

void drawStationHeader(Graphics& g, const char* title, const char* instruction) {
    drawHeaderBand(g);
    g.roundRect(kBadge, 6, kBadgeRed, true);
    g.roundRect(kBadge, 6, palette::brass, false);
    g.text("THE VORN CO.", 348, 132, TextSize::Small, palette::gold, true, true);
    g.text(title, 445, 118, TextSize::Large, palette::gold, false, true);
    g.text(instruction, 445, 146, TextSize::Small, palette::headerInstruction, false, true);
}

void drawStationFooter(Graphics& g, const char* modeName, bool vornMode, int stationNumber,
                       int stationCount) {
    g.roundRect(kFooterBandRect, 8, kFooterBand, true);
    g.roundRect(kFooterBandRect, 8, palette::brass, false);
    constexpr int kFooterY = 640;
    g.text("EMPLOYEE No. 0049", 281, kFooterY, TextSize::Small, palette::gold, false, false);
    char mode[48];
    Graphics::formatInto(mode, sizeof mode, "MODE: %s", modeName);
    g.text(mode, 497, kFooterY, TextSize::Small, vornMode ? palette::alarmRed : palette::gold, false,
           false);
    char progress[48];
    Graphics::formatInto(progress, sizeof progress, "STATION %d / %d", stationNumber, stationCount);
    g.text(progress, 697, kFooterY, TextSize::Small, palette::gold, false, false);
}

Color clockColor(double timeLeft, double screenTime, bool vornMode) {
    const int s = static_cast<int>(std::ceil(timeLeft));
    const bool warning = s < 4 && timeLeft > 0.0;
    // VORN gives no warning at all: its clock stays green to the end.
    if (!warning || vornMode) {
        return palette::terminalGreen;
    }
    // Three blinks a second: red on the even sixths, gold on the odd ones.
    return static_cast<long long>(screenTime * 6.0) % 2 == 0 ? palette::alarmRed : palette::gold;
}

void drawClock(Graphics& g, double timeLeft, double screenTime, bool vornMode) {
    g.circle(kClockX, kClockY, 24, palette::darkBrass, true);
    g.circle(kClockX, kClockY, 20, palette::ink, true);
    // Time up shows "00", never a negative count.
    const int s = static_cast<int>(std::ceil(timeLeft));
    char digits[16];
    Graphics::formatInto(digits, sizeof digits, "%02d", std::max(s, 0));
    g.text(digits, kClockX, kClockY, TextSize::Normal, clockColor(timeLeft, screenTime, vornMode),
           true, true);
}

void drawFiredNotice(Graphics& g, const ProceduralArt& art, bool vornMode, long timesFired) {
    drawTerminal(g, art, palette::redScreen);
    g.text("THE VORN CO. - OFFICE OF TERMINATIONS", kCentreX, 128, TextSize::Normal, palette::amber,
           true, true);
    g.text("FIRED", kCentreX, 278, TextSize::Giant, palette::alarmRed, true, true);
    // On VORN the company does not even say why.
    if (vornMode) {
        g.text("[ NO REASON ON FILE ]", kCentreX, 378, TextSize::Normal, palette::faultRed, true, true);
    } else {
        g.text("YOUR EMPLOYMENT HAS BEEN TERMINATED.", kCentreX, 378, TextSize::Normal,
               rgb(229, 153, 41), true, true);
    }
    g.roundRect({553, 438, 260, 60}, 6, palette::brass, false);
    g.text("TIMES FIRED", kCentreX, 454, TextSize::Small, palette::brass, true, true);
    char count[32];
    Graphics::formatInto(count, sizeof count, "%06ld", timesFired);
    g.text(count, kCentreX, 478, TextSize::Normal, palette::alarmRed, true, true);
    g.text("> REHIRED. RETURN TO STATION 01.", kCentreX, 640, TextSize::Small, palette::amber, true,
           true);
}

void drawVictoryNotice(Graphics& g, const ProceduralArt& art, bool vornMode, bool cardAwarded) {
    drawTerminal(g, art, palette::greenScreen);
    g.text("SHIFT COMPLETE", kCentreX, 218, TextSize::Huge, palette::terminalGreen, true, true);
    g.text("You survived The Vorn Co.", kCentreX, 298, TextSize::Large, palette::gold, true, true);
    if (cardAwarded) {
        g.roundRect({533, 358, 300, 90}, 10, palette::brass, true);
        g.roundRect({533, 358, 300, 90}, 10, palette::gold, false);
        g.text("CLOCK-IN CARD AWARDED", kCentreX, 388, TextSize::Normal, palette::ink, true, true);
        g.text("Continue is now unlocked.", kCentreX, 418, TextSize::Small, palette::ink, true, true);
    } else {
        g.text(vornMode ? "No card. The Vorn Co. never rewards Vorn." : "No clock-in card this time.",
               kCentreX, 388, TextSize::Normal, rgb(216, 144, 39), true, true);
    }
    g.text("[ click or press any key ]", kCentreX, 650, TextSize::Small, palette::midGreen, true, true);
}

}  // namespace vorn
