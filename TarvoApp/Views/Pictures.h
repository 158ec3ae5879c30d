#pragma once

#include <QString>

namespace tarvo {

class AppModel;
class MainWindow;

/// Pictures of the windows as they stand in the documentation: in both appearances, and inside a folder. They
/// are PNG files named after what they show and the language. Runs the event loop meanwhile. Returns false
/// when one could not be saved.
bool takePictures(MainWindow& windows, AppModel& app, const QString& folder);

} // namespace tarvo
