// The Vorn Co.: construct the application, run it if it started, and always
// shut it down in full before leaving.

#include "app/application.h"

#include <SDL.h>

int main(int argc, char* argv[]) {
    (void)argc;
    (void)argv;
    vorn::Application app;
    const bool started = app.init();
    if (started) {
        app.run();
    } else {
        SDL_Log("The Vorn Co. failed to initialise.");
    }
    app.shutdown();
    return started ? 0 : 1;
}
