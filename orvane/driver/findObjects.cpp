#include "orvane/driver/findObjects.h"

#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <utility>

#include "orvane/display/Display.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/Failure.h"
#include "orvane/driver/Query.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/kindOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/preOrder.h"
#include "orvane/embedding/textOf.h"

namespace orvane::driver {

using display::Display;
using display::DisplayObject;
using Objects = std::vector<std::shared_ptr<DisplayObject>>;

namespace {

// One part of an object's path.
struct Step {
    std::string kind;
    int number = 0;
};

std::vector<Step> parsePath(const std::string& path) {
    std::vector<Step> steps;
    std::istringstream stream(path);
    for (std::string word; std::getline(stream, word, '/');) {
        const auto bracket = word.find('[');
        Step step{word.substr(0, bracket)};
        if (bracket != std::string::npos) {
            step.number = std::atoi(word.c_str() + bracket + 1);
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

// Calls `visit` with each object of the display and its path.
template <typename Visit>
void visitObjects(const Display& display, Visit visit) {
    std::vector<Step> path;
    // How many objects of a kind came before, for each depth of the path.
    std::vector<std::map<std::string, int>> numbers;
    embedding::preOrder(display.getObjects(), embedding::childrenOf,
                        [&](DisplayObject& object, int depth) {
                            const auto size = static_cast<std::size_t>(depth);
                            path.resize(size);
                            numbers.resize(size);
                            std::string kind = embedding::kindOf(object);
                            const int number = numbers.back()[kind]++;
                            // "*" counts all siblings.
                            const int any = numbers.back()["*"]++;
                            path.back() = {std::move(kind), number};
                            visit(object, path, any);
                        });
}

std::string describe(const Query& query) {
    std::string text;
    const std::pair<const char*, const std::string*> fields[] = {{"kind", &query.kind},
                                                                 {"label", &query.label},
                                                                 {"text", &query.text},
                                                                 {"path", &query.path}};
    for (const auto& [name, value] : fields) {
        if (!value->empty()) {
            text += (text.empty() ? "" : ", ") + std::string(name) + " \"" + *value + '"';
        }
    }
    return text.empty() ? "any property" : text;
}

// The objects of the display, one a line, for the messages of failures.
std::string listObjects(const Display& display) {
    std::ostringstream list;
    visitObjects(display, [&](DisplayObject& object, const std::vector<Step>& path, int) {
        list << '\n' << std::string(2 * path.size(), ' ') << path.back().kind;
        if (path.back().number > 0) {
            list << '[' << path.back().number << ']';
        }
        if (const std::string label = embedding::labelOf(object); !label.empty()) {
            list << " label \"" << label << '"';
        }
        if (const std::string text = embedding::textOf(object); !text.empty()) {
            list << " text \"" << text << '"';
        }
        list << (object.isVisible() ? "" : " hidden");
    });
    return list.str();
}

}  // namespace

Objects findObjects(const Display& display, const Query& query) {
    const std::vector<Step> wanted = parsePath(query.path);
    Objects found;
    // How far the current path fits what is wanted, for each depth.
    std::vector<bool> fits{true};
    visitObjects(display, [&](DisplayObject& object, const std::vector<Step>& path, int any) {
        if (!wanted.empty()) {
            const std::size_t depth = path.size();
            fits.resize(depth);
            bool isWanted = fits.back() && depth <= wanted.size();
            if (isWanted) {
                const Step& step = wanted[depth - 1];
                isWanted = step.kind == "*"
                               ? step.number == any
                               : step.kind == path.back().kind && step.number == path.back().number;
            }
            fits.push_back(isWanted);
            if (!isWanted || depth != wanted.size()) {
                return;
            }
        }
        if ((query.kind.empty() || query.kind == path.back().kind) &&
            (query.label.empty() || query.label == embedding::labelOf(object)) &&
            (query.text.empty() || query.text == embedding::textOf(object)) && object.isVisible()) {
            found.push_back(std::static_pointer_cast<DisplayObject>(object.shared_from_this()));
        }
    });
    return found;
}

std::shared_ptr<DisplayObject> findObject(const Display& display, const Query& query) {
    const Objects found = findObjects(display, query);
    if (found.size() == 1) {
        return found.front();
    }
    throw Failure((found.empty() ? "no visible object has "
                                 : std::to_string(found.size()) + " visible objects have ") +
                  describe(query) + "; the objects are:" + listObjects(display));
}

}  // namespace orvane::driver
