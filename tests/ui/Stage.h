#pragma once

#include "support/World.h"
#include "ui/EngineView.h"
#include "ui/MainWindow.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

namespace kelvo::test {

/// The real window on the real engine of a world, without a display.
class Stage {
public:
    /// Gets every warning of the toolkit and of the QML files while a stage lives.
    static std::function<void(const std::string&)> onWarning;

    Stage();
    ~Stage();

    /// A small organisation of 13 criteria and four roles, in the world's outputs directory.
    void writeOrganisation();
    /// Starts the engine on what the world's directories hold, and opens the window.
    void open(int width = 1440, int height = 900);
    /// Proves the person's identity with `role`, without the window's controls.
    void verify(const std::string& role);

    EngineVM& engine() { return world.engine(); }
    QQuickWindow& window() { return *main_->window(); }
    void setDark(bool dark) { main_->setDark(dark); }

    /// Lets everything happen that is due: queued operations, bindings, animations' first frames.
    void settle();
    /// Waits for the animations to end as well.
    void rest();

    /// Every visible item below `root`, itself included, in the order of painting.
    QList<QQuickItem*> items(QQuickItem* root = nullptr);
    /// The visible item with this object name.
    QQuickItem* named(const char* objectName);
    /// The visible text that reads so.
    QQuickItem* label(const QString& text);
    /// The visible control with this text or accessible name.
    QQuickItem* control(const QString& label);
    /// The texts that are visible, in the order of painting.
    QStringList texts(QQuickItem* root = nullptr);
    bool shows(const QString& text) { return texts().contains(text); }

    /// Brings the item into view and clicks its middle. Throws where that is not possible.
    void click(QQuickItem* item);
    void click(const QString& label) { click(control(label)); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    void save(const QString& name);

    World world;

private:
    std::unique_ptr<EngineView> view_;
    std::unique_ptr<MainWindow> main_;
};

/// The folder for pictures that a person looks at, from KELVO_SCREENSHOTS; none where unset.
std::optional<QString> pictureFolder();

} // namespace kelvo::test
