// Runs the application off-screen, presses its button and looks at the text on it.
#include <orvane/driver/Driver.h>

#include <iostream>
#include <memory>
#include <string>

#include <orvane/orvane.h>

using orvane::driver::Driver;

namespace {

void checkPresses(Driver& driver) {
    driver.find({.text = "@NAME@"});
    for (const std::string text : {"Press me", "Pressed 1 time", "Pressed 2 times"}) {
        driver.find({.text = text});
        driver.press({.label = "Press"});
    }
}

void checkThatThePictureIsFound(Driver& driver) {
    if (driver.find({.kind = "Image"})->getFrame().width == 0) {
        throw orvane::driver::Failure("the picture is missing in the resources");
    }
}

}  // namespace

// Arguments: the folder of the application's library, the folder of its resources.
int main(int, char** arguments) try {
    Driver driver(arguments[1], {.size = {400, 400}, .resources = arguments[2]});
    checkThatThePictureIsFound(driver);
    checkPresses(driver);
} catch (const orvane::driver::Failure& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
