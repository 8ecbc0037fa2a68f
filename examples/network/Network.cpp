#include <orvane/orvane.h>

#include <memory>
#include <sstream>
#include <string>

#include "LocalServer.h"
#include "files.h"

namespace network {

using namespace orvane::display;
using orvane::network::Request;
using orvane::network::RequestService;
using orvane::network::Response;

namespace {

std::string bodyOf(const Response& response) {
    return {reinterpret_cast<const char*>(response.getBody().data()), response.getBody().size()};
}

// A white card with a heading and, below it, a line on how its request went.
class Card {
public:
    Card(const std::string& heading, float x, float width, float height)
        : root_(DisplayFactory::createContainer()) {
        root_->setTranslate(x, kTop);
        const auto back = DisplayFactory::createRect();
        back->set(0, 0, width, height);
        back->setRx(14);
        back->setRy(14);
        back->setFillColor(0xFFFFFFFF);
        root_->add(back);
        addText(heading, "DejaVu Sans Bold", 17, 38, 0xFF22303C);
        status_ = addText("loading", "DejaVu Sans", 13, height - 20, 0xFF6B7680);
        Display::instance()->add(root_);
    }

    std::shared_ptr<graphics::Text> addText(const std::string& content, const std::string& font,
                                            float size, float y, unsigned color) const {
        const auto text = DisplayFactory::createText(false);
        text->setFont(font);
        text->setTextSize(size);
        text->setX(kInset);
        text->setY(y);
        text->setFillColor(color);
        text->setContent(content);
        root_->add(text);
        return text;
    }
    void add(const std::shared_ptr<DisplayObject>& object) const { root_->add(object); }

    void report(const Response& response) const {
        const auto type = response.getHeaders().find("Content-Type");
        status_->setContent(std::to_string(response.getStatusCode()) + ", " +
                            std::to_string(response.getBody().size()) + " bytes" +
                            (type == response.getHeaders().end() ? "" : " of " + type->second));
    }
    void report(int code, const std::string& message) const {
        status_->setFillColor(0xFFF2545B);
        status_->setContent(std::to_string(code) + ", " + message);
    }

    static constexpr float kInset = 24;
    static constexpr float kTop = 40;

private:
    std::shared_ptr<graphics::Container> root_;
    std::shared_ptr<graphics::Text> status_;
};

// The ground behind the cards, as large as the display.
class Paper : public FrameChangedEvent::listener_type {
public:
    Paper() {
        sheet_->setFillColor(0xFFF1EEE8);
        cover(Display::instance()->getScreenSize());
        Display::instance()->add(sheet_);
    }
    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
        cover(event.frame);
    }

private:
    void cover(const geometry::Size<double>& size) {
        sheet_->set(0, 0, static_cast<float>(size.width), static_cast<float>(size.height));
    }

    std::shared_ptr<graphics::Rect> sheet_ = DisplayFactory::createRect();
};

class Main {
public:
    void main() {
        Display::instance()->addListener<FrameChangedEvent>(paper_);
        load("/picture.png", picture_, [this](const Response& response) {
            const auto image = DisplayFactory::createImage();
            image->setContent(bodyOf(response));
            image->setTranslate(Card::kInset, 60);
            picture_.add(image);
        });
        load("/facts.json", facts_, [this](const Response& response) {
            // A text takes no line breaks: each line is one.
            std::istringstream lines(bodyOf(response));
            float y = 84;
            for (std::string line; std::getline(lines, line); y += 24) {
                facts_.addText(line, "DejaVu Sans Mono", 13, y, 0xFF22303C);
            }
        });
        load("/nothing", nothing_, [](const Response&) {});
    }

private:
    // The answer comes back on the main thread, where the display may be changed.
    void load(const std::string& path, const Card& card,
              const std::function<void(const Response&)>& show) {
        Request request;
        request.setUrl(server_.url(path));
        request.setErrorCallback(
            [&card](int code, const std::string& message) { card.report(code, message); });
        RequestService::asyncRequest(request, [&card, show](const Response& response) {
            show(response);
            card.report(response);
        });
    }

    LocalServer server_{
        {{"/picture.png", {"image/png", kPicture}}, {"/facts.json", {"application/json", kFacts}}}};
    std::shared_ptr<Paper> paper_ = std::make_shared<Paper>();
    Card picture_{"A picture", 40, 528, 430};
    Card facts_{"A text in JSON", 588, 500, 430};
    Card nothing_{"Nothing", 1108, 132, 430};
};

}  // namespace
}  // namespace network

ORVANE_MAIN_CLASS(network::Main)
