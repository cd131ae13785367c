#pragma once

#include "ports/FilePanel.h"

#include <QQmlEngine>
#include <QQmlFileSelector>

namespace kelvo {

/// The desktop's own file chooser where the platform has one, otherwise the toolkit's. The event
/// loop runs while it is open; it closes without a choice when the program quits.
class DialogFilePanel : public FilePanel {
public:
    DialogFilePanel();

    std::optional<std::filesystem::path> choose(const FilePanelRequest& request) override;

private:
    QQmlEngine qml_;
    QQmlFileSelector selector_{&qml_};
};

} // namespace kelvo
