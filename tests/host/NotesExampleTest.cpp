#include <sstream>

#include "tests/host/HostTest.h"

namespace orvane::tests {

using NotesExample = HostTest;

TEST_F(NotesExample, AScriptMovesWritesAndSavesNotes) {
    const std::string events = write("events",
                                     "0.1 down 100 170\n"  // the first note to the third column
                                     "0.2 move 300 180\n"
                                     "0.3 move 760 160\n"
                                     "0.4 up 760 160\n"
                                     "0.5 clipboard From elsewhere\n"
                                     "0.5 key v ctrl\n"
                                     "0.6 drop 400 500 text Dropped\n"
                                     "0.7 key n ctrl\n"
                                     "0.8 text Bake # bread\n"
                                     "0.9 key Return ctrl\n"
                                     "1.0 close\n");
    for (const bool isOffscreen : {true, false}) {
        std::vector<std::string> arguments{"--size", "900x600", "--events", events,
                                           ORVANE_NOTES_EXAMPLE};
        if (isOffscreen) {
            arguments.insert(arguments.begin(), "--offscreen");
        }
        const std::string data = file(isOffscreen ? "offscreen" : "window");
        runWell(arguments, {"XDG_DATA_HOME=" + data});
        std::stringstream saved;
        saved << std::ifstream(data + "/Orvane/AppData/notes.json").rdbuf();
        std::string text = saved.str();
        std::erase_if(text, [](char c) { return c == '\n'; });
        EXPECT_EQ(text,
                  "[ [  \"Write to Aunt Ida\",  \"Fix the bicycle light\",  \"Bake # bread\" ], [  "
                  "\"Plan the trip to the coast:\\ntrain, tent, tide table\",  \"Dropped\" ], [  "
                  "\"From elsewhere\",  \"Buy coffee\",  \"Water the plants\" ]]");
    }
}

}  // namespace orvane::tests
