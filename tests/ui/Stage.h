#pragma once

#include "support/WorldStory.h"
#include "ui/AuditView.h"
#include "ui/BeginView.h"
#include "ui/EngineView.h"
#include "ui/MainWindow.h"
#include "ui/ProofView.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <memory>

namespace kelvo::test {

/// The real window on the real engine of a world, without a display, and scenes in it. After each
/// line of a scene everything happens that is due.
class Stage : public WorldStory {
public:
    /// Gets every warning of the toolkit and of the QML files while a stage lives.
    static std::function<void(const std::string&)> onWarning;
    /// Where pictures and record files go that a show leaves; nowhere where empty.
    std::filesystem::path results;

    Stage();
    ~Stage() override;

    /// Starts the engine on what the world's directories hold, and opens the window.
    void open(int width = 1440, int height = 900);

    EngineVM& engine() { return world.engine(); }
    QQuickWindow& window() { return *main_->window(); }
    BeginView& begin() { return *begin_; }

    /// Lets everything happen that is due: queued operations, bindings, animations' first frames.
    void settle();

    /// Every visible item below `root`, itself included, in the order of painting.
    QList<QQuickItem*> items(QQuickItem* root = nullptr);
    /// The visible item of this class, as the toolkit names it; throws where there is none.
    QQuickItem& theOne(const char* className);
    /// The visible item with this object name, or else the control that is called so, or else the
    /// text that reads so; none where there is none.
    QQuickItem* find(const QString& name);
    bool shows(const QString& text);

    /// Brings the item into view and clicks its middle. Throws where that is not possible.
    void click(QQuickItem* item);
    void press(const QString& key);

    FakePrograms programs;

protected:
    void acted() override;

private:
    void tellOfThePerson();
    void lookAtTheWindow();
    void save(const std::string& name);

    std::unique_ptr<EngineView> view_;
    std::unique_ptr<ProofView> proof_;
    std::unique_ptr<BeginView> begin_;
    std::unique_ptr<AuditView> audit_;
    int samples_ = 0; ///< opened
    std::unique_ptr<MainWindow> main_;
    bool hurried_ = false; ///< the next line comes before what is due has happened
};

} // namespace kelvo::test
