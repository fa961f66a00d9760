#pragma once
// The screens' colours written out as plain numbers, for the screen tests.
// The game keeps its own names for them; a test that borrowed those names
// would follow any change made to them, so a gold turned orange would still
// pass. Here gold is (255, 216, 107) whatever the game calls it.

#include "gfx/color.h"

namespace vorn::test::screen_ink {

constexpr Color black = rgb(0, 0, 0);
constexpr Color white = rgb(255, 255, 255);
constexpr Color gold = rgb(255, 216, 107);
constexpr Color brass = rgb(199, 154, 53);
constexpr Color terminalGreen = rgb(70, 224, 138);
constexpr Color dimGreen = rgb(42, 134, 82);
constexpr Color alarmRed = rgb(255, 58, 42);
constexpr Color amber = rgb(204, 136, 36);
constexpr Color darkPanel = rgb(24, 54, 22);
constexpr Color greenScreen = rgb(16, 36, 15);
constexpr Color redScreen = rgb(30, 6, 6);

// The studio's name on a splash without its logo.
constexpr Color splashName = rgb(216, 199, 156);
// The title terminal: its highlighted menu row and its footer counts.
constexpr Color menuHighlight = rgb(17, 56, 34);
constexpr Color titleFooter = rgb(56, 179, 110);
// The station screen: badge, instruction line, footer band and clock.
constexpr Color badgeRed = rgb(74, 18, 18);
constexpr Color instruction = rgb(255, 170, 46);
constexpr Color footerBand = rgb(22, 50, 21);
constexpr Color clockRim = rgb(99, 77, 26);
constexpr Color clockFace = rgb(20, 20, 20);
// The room and the monitor around the glass.
constexpr Color flatWall = rgb(42, 37, 25);
constexpr Color bolt = rgb(159, 123, 42);
constexpr Color casingBeige = rgb(216, 199, 156);
constexpr Color casingOutline = rgb(170, 162, 142);
constexpr Color casingHighlight = rgb(232, 226, 208);
constexpr Color plateInk = rgb(120, 114, 98);
constexpr Color glassRecess = rgb(18, 18, 20);
// The monitor's ten faces run from the casing's highlight outside to the
// innermost by the glass; the fifth is the one half way in.
constexpr Color fifthFace = rgb(187, 181, 164);
constexpr Color innerFace = rgb(131, 125, 109);
// The two knobs' faces and the power lamp's dark housing on the chin.
constexpr Color knobFace = rgb(214, 207, 188);
constexpr Color lampHousing = rgb(40, 30, 20);
// The textured casing plastic, the hazard strip's amber and dark stripes:
// near enough only, the grain and the speckle move them a little.
constexpr Color casingPlastic = rgb(218, 211, 190);
constexpr Color hazardAmber = rgb(207, 140, 28);
constexpr Color hazardDark = rgb(23, 18, 8);
// The notices.
constexpr Color firedReason = rgb(229, 153, 41);
constexpr Color firedNoReason = rgb(204, 46, 33);
constexpr Color cardLettering = rgb(20, 20, 20);
constexpr Color noCard = rgb(216, 144, 39);
constexpr Color dismiss = rgb(49, 156, 96);
// A colour the game never draws, for a test's own marks.
constexpr Color magenta = rgb(255, 0, 255);

}  // namespace vorn::test::screen_ink

namespace vorn::test {

// An even grey, for what a shade of black or a glare does to a grey or
// white canvas.
constexpr Color grey(int level) { return rgb(level, level, level); }

// A colour part way through a fade towards black: every channel scaled by
// `strength` and cut down to a whole number, as a shift card fades in and
// out (gold at half strength is (127, 108, 53)).
constexpr Color faded(Color c, double strength) {
    return rgb(static_cast<int>(red(c) * strength), static_cast<int>(green(c) * strength),
               static_cast<int>(blue(c) * strength));
}

}  // namespace vorn::test
