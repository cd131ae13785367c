#pragma once

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace kelvo {

class AuditView;
class BeginView;
class EngineView;
class ProofView;

/// The one window of the program over an engine.
class MainWindow {
public:
    /// To be called once, after the application object was made and before any window: the style
    /// and the hints that the window counts on.
    static void prepare();

    /// Loads and shows the window. The views must outlive it.
    MainWindow(EngineView& view, ProofView& proof, BeginView& begin, AuditView& audit);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    /// None when the window's files do not load; the reasons were written as warnings.
    QQuickWindow* window() const;

    void setDark(bool dark);
    /// Brings the window to the front, also when it was minimised.
    void raise();

private:
    QQmlApplicationEngine qml_;
};

} // namespace kelvo
