// The frame clock and the event pump: each frame reads a steady clock once,
// turns SDL's queued events into this frame's InputState, advances the game by
// the clamped frame time and draws. There is no sleep and no frame cap here:
// the renderer's vsync paces the loop.

#include "app/application.h"

#include <algorithm>
#include <chrono>

namespace vorn {

void Application::run() {
    using Clock = std::chrono::steady_clock;
    auto previous = std::chrono::duration_cast<std::chrono::nanoseconds>(
                        Clock::now().time_since_epoch()).count();
    while (running) {
        const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
                             Clock::now().time_since_epoch()).count();
        const double elapsed = static_cast<double>(now - previous) / 1e9;
        previous = now;
        step(elapsed);
    }
}

void Application::step(double elapsed) {
    processEvents();
    update(std::min(elapsed, kMaxFrameTime));
    render();
}

void Application::processEvents() {
    input.clearEdges();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) {
            // The frame still finishes its update and render.
            running = false;
        } else if (event.type == SDL_WINDOWEVENT) {
            if (event.window.event == SDL_WINDOWEVENT_RESIZED ||
                event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) {
                graphics.resetLogicalSize();
            }
        } else if (event.type == SDL_RENDER_TARGETS_RESET) {
            // The renderer dropped what its target textures held (Direct3D
            // does this when the window is resized): the canvas and the
            // copies are made again.
            graphics.makeCanvas();
            art.makeScaledCopies(graphics.renderer);
        } else if (event.type == SDL_RENDER_DEVICE_RESET) {
            // Every texture went with the device: the canvas is made again,
            // the art painted and the logo loaded again.
            graphics.makeCanvas();
            reloadTextures();
        } else {
            applyInputEvent(event, input);
        }
    }
}

void applyInputEvent(const SDL_Event& event, InputState& input) {
    switch (event.type) {
        case SDL_KEYDOWN: {
            // Auto-repeat is not filtered: a held key keeps setting its
            // edge, which is what lets a held arrow scroll the menu.
            input.anyKey = true;
            const SDL_Keycode key = event.key.keysym.sym;
            if (key == SDLK_w || key == SDLK_UP) {
                input.up = true;
            } else if (key == SDLK_s || key == SDLK_DOWN) {
                input.down = true;
            } else if (key == SDLK_a || key == SDLK_LEFT) {
                input.left = true;
            } else if (key == SDLK_d || key == SDLK_RIGHT) {
                input.right = true;
            } else if (key == SDLK_RETURN || key == SDLK_SPACE || key == SDLK_KP_ENTER) {
                input.confirm = true;
            } else if (key == SDLK_ESCAPE) {
                input.escape = true;
            }
            break;
        }
        case SDL_MOUSEMOTION:
            input.mouseX = event.motion.x;
            input.mouseY = event.motion.y;
            break;
        case SDL_MOUSEBUTTONDOWN:
            if (event.button.button == SDL_BUTTON_LEFT) {
                input.mouseDown = true;
                input.mousePressed = true;
                input.mouseX = event.button.x;
                input.mouseY = event.button.y;
            }
            break;
        case SDL_MOUSEBUTTONUP:
            // The release does not move the pointer: its position came
            // with the last motion or press.
            if (event.button.button == SDL_BUTTON_LEFT) {
                input.mouseDown = false;
                input.mouseReleased = true;
            }
            break;
        default:
            break;
    }
}

}  // namespace vorn
