#pragma once

#include "TarvoApp/App/CleaningDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/HoldingDesk.h"
#include "TarvoApp/App/PhotoList.h"
#include "TarvoApp/App/PhotoPlaces.h"
#include "TarvoApp/App/PreviewDesk.h"
#include "TarvoApp/App/Thumbnails.h"
#include "TarvoModel/Photos/PhotoReading.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

#include <atomic>
#include <memory>
#include <set>
#include <stop_token>
#include <string>

namespace tarvo {

/// The review of pictures as its window shows it: chapters, the photos of one of them, and which of those the
/// user wants to set aside. Nothing is chosen by itself.
class PhotosDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    /// What goes on; empty when nothing does.
    Q_PROPERTY(QString busyText READ busyText NOTIFY progressed)
    /// Why there is nothing to see, or not all; empty otherwise.
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// Each with its "title" and "facts".
    Q_PROPERTY(QVariantList chapters READ chapters NOTIFY changed)
    Q_PROPERTY(int chapter READ chapter WRITE setChapter NOTIFY changed)
    /// What is to be known of the chapter.
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    /// True where the chapter proposes which photos stay.
    Q_PROPERTY(bool proposes READ proposes NOTIFY changed)
    Q_PROPERTY(tarvo::PhotoList* photos READ photos CONSTANT)
    Q_PROPERTY(tarvo::PhotoPlaces* places READ places CONSTANT)
    Q_PROPERTY(bool hasChosen READ hasChosen NOTIFY chosenChanged)
    Q_PROPERTY(QString chosenText READ chosenText NOTIFY chosenChanged)
    /// Whether undoing puts back photos: they were set aside here, and nothing was since.
    Q_PROPERTY(bool offersUndo READ offersUndo NOTIFY undoChanged)
    /// Whether that can be done now.
    Q_PROPERTY(bool mayUndo READ mayUndo NOTIFY undoChanged)

  public:
    PhotosDesk(const Ground& ground, CleaningDesk& cleaning, HoldingDesk& holding, PreviewDesk& preview,
               std::string home, QObject* parent = nullptr);
    /// Ends what goes on.
    ~PhotosDesk() override;

    /// Looks through the folder; nothing is forgotten that was chosen and is still there.
    Q_INVOKABLE void show();
    /// Stops looking, and offers no undoing any more.
    Q_INVOKABLE void leave();
    Q_INVOKABLE void lookIn(const QUrl& folder);
    /// Chooses the photo at that place of the chapter, or no longer.
    Q_INVOKABLE void toggle(int index);
    /// Shows it large, in the window of previews.
    Q_INVOKABLE void preview(int index);
    /// Chooses all of the chapter but those that are proposed to stay.
    Q_INVOKABLE void chooseRest();
    Q_INVOKABLE void chooseNone();
    /// Asks whether the chosen ones are set aside.
    Q_INVOKABLE void setAside();
    /// Puts back what was set aside here last, and shows it.
    Q_INVOKABLE void undo();
    void setChapter(int index);

    [[nodiscard]] QString folder() const;
    [[nodiscard]] QString busyText() const;
    [[nodiscard]] QString message() const;
    [[nodiscard]] QVariantList chapters() const;
    [[nodiscard]] int chapter() const { return chapter_; }
    [[nodiscard]] QString hint() const;
    [[nodiscard]] bool proposes() const;
    [[nodiscard]] const Thumbnails& thumbnails() const { return thumbnails_; }
    [[nodiscard]] PhotoList* photos() { return &list_; }
    [[nodiscard]] PhotoPlaces* places() { return &places_; }
    [[nodiscard]] bool hasChosen() const { return !chosen_.empty(); }
    [[nodiscard]] QString chosenText() const;
    [[nodiscard]] bool offersUndo() const { return wasSetAsideHere_ && holding_.canUndo(); }
    [[nodiscard]] bool mayUndo() const;

  signals:
    void changed();
    void progressed();
    void chosenChanged();
    void undoChanged();

  private:
    /// One look through a folder. Shared with its thread.
    struct Looking {
        std::stop_source stop;
        std::atomic<std::size_t> looked = 0;
        std::size_t total = 0; ///< Of the main thread; 0 until the photos are listed.
    };
    void forget();
    void take(PhotosRead read);
    /// What undoing would put back now is somebody else's, or is photos of here.
    void setSetAsideHere(bool isSo);
    void showChapter();
    [[nodiscard]] const PhotoChapter* shownChapter() const;
    [[nodiscard]] std::string nameOfFolder() const;

    Ground ground_;
    CleaningDesk& cleaning_;
    HoldingDesk& holding_;
    PreviewDesk& preview_;
    std::string home_; ///< Which is shown as "~".
    Thumbnails thumbnails_;
    std::string folder_; ///< Absolute; empty for the home's pictures.
    PhotosRead read_;
    int chapter_ = 0;
    std::set<std::string> chosen_; ///< Paths.
    PhotoList list_;
    PhotoPlaces places_;
    std::shared_ptr<Looking> looking_; ///< None while nothing goes on.
    QTimer ticker_;
    bool wasAgreedHere_ = false;   ///< Of the cleanup that was agreed to last.
    bool wasSetAsideHere_ = false; ///< Of what was set aside last.
    bool putsBack_ = false;        ///< What comes back is to be shown.
};

} // namespace tarvo
