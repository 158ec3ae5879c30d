#pragma once

#include "TarvoApp/Views/Desktop.h"
#include "TarvoApp/Views/OneInstance.h"

#include <QQmlApplicationEngine>
#include <QTranslator>

class QQuickWindow;

namespace tarvo {

class AppModel;

/// The application's windows on the model, which must outlive them.
class MainWindow final {
  public:
    /// How the main window begins: shown, or hidden until the panel asks for it.
    enum class Begin { shown, inPanel };
    /// Whatever goes wrong is on standard error.
    explicit MainWindow(AppModel& app, Begin begin = Begin::shown);

    /// Null when it could not be shown.
    [[nodiscard]] QQuickWindow* window() const;
    [[nodiscard]] Desktop& desktop() { return desktop_; }

    /// The windows beside it.
    enum class Side { settings, help, news, preview, history, growth, photos };
    /// Shows one of them; null when it could not be shown.
    QQuickWindow* open(Side side);

    /// Brings the window before the others.
    void raise() const;
    /// The same for somebody who has started the application once more, with that wish: the folder is shown,
    /// and what cannot be as wished is said.
    void answer(const StartWish& wish);

  private:
    AppModel& app_;
    Desktop desktop_;
    QTranslator dialogWords_;
    QTranslator systemWords_;
    QQmlApplicationEngine engine_; ///< Goes first, since its windows use the rest.
};

} // namespace tarvo
