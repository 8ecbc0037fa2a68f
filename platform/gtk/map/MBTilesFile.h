#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace orvane::platform {

struct NSMapTile;

// A file in the format MBTiles: a database of SQLite with a table, or a view, of tiles. The file
// may be hostile: it is only read, its size of a tile and the time for one are limited, and what it
// contains cannot call functions with effects. Thread-safe; one thread at a time reads.
class MBTilesFile {
public:
    // Opened by the first read.
    explicit MBTilesFile(std::string path);

    struct Tile {
        std::vector<unsigned char> bytes;  // empty if there is no such tile
        std::string failure;               // why nothing can be read; empty otherwise
    };
    Tile read(const NSMapTile& tile);

private:
    bool open();
    // Keeps the message of the database.
    void fail();

    const std::string path_;
    std::mutex mutex_;
    std::string failure_;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> database_;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> query_;
};

}  // namespace orvane::platform
