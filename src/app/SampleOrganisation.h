#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace kelvo {

/// Opens the sample organisation, which the program carries with it, in a window of its own: a
/// second process of this program on a scratch folder that nobody else uses. The folder stays until
/// the system clears its temporary files. False where it cannot be made or started.
bool openSampleOrganisation();

/// The scratch folder that this process was started for, if it was: "--sample FOLDER".
std::optional<QString> sampleFolder(const QStringList& arguments);

} // namespace kelvo
