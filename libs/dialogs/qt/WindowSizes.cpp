#include "qt/WindowSizes.h"

#include <QStringList>
#include <exception>

#include "controls/QtText.h"

namespace vlm::ui {

namespace {

constexpr const char* kApplication = "Aldra";
constexpr const char* kSection = "Settings";
constexpr int kLeast = 100;
constexpr int kMost = 20000;

std::string KeyOf(const std::string& window) { return "Window." + window; }

}  // namespace

std::optional<QSize> WindowSizes::SizeOf(const std::string& window) const {
    try {
        const QStringList sides = ToQt(settings_.Get(kApplication, kSection, KeyOf(window), "")).split('x');
        if (sides.size() != 2) return std::nullopt;
        const QSize size(sides[0].toInt(), sides[1].toInt());
        const auto possible = [](int side) { return side >= kLeast && side <= kMost; };
        return possible(size.width()) && possible(size.height()) ? std::optional(size) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

void WindowSizes::Keep(const std::string& window, QSize size) {
    try {
        settings_.Save(kApplication, kSection, KeyOf(window),
                       std::to_string(size.width()) + "x" + std::to_string(size.height()));
    } catch (const std::exception&) {  // a size that is not kept is no error of the dialog
    }
}

}  // namespace vlm::ui
