#include "TarvoCLI/ExplorerSession.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/Terminal.h"
#include "Platform/ToolCommand.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/ExplorerLines.h"
#include "TarvoCLI/Screen.h"
#include "TarvoCLI/ScreenSafeties.h"
#include "TarvoCLI/TreeMeasuring.h"
#include "TarvoModel/Exploring/NeverTouched.h"
#include "TarvoModel/Exploring/SettingAside.h"
#include "TarvoModel/Exploring/WhatIsIt.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <optional>
#include <stop_token>
#include <utility>

namespace tarvo {

using lumo::NamedEntry;
using lumo::NamedTree;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

constexpr Words measuringAnew{"midiendo otra vez", "measuring anew"};
constexpr std::chrono::milliseconds patience{100};
constexpr std::chrono::milliseconds patienceAtFirst{10}; // Until there is something to see.

/// What goes on in the background: one thing at a time. When it is done, `then` is called on the thread that
/// draws.
struct Work {
    std::string doing;
    std::future<std::function<void()>> then; ///< The work yields what is to be done with what came of it.
};

class Session final {
  public:
    Session(const Explored& explored, const Invocation& invocation, Screen& screen)
        : explored_(explored), desk_(deskOf(invocation, "explore")), screen_(screen),
          explorer_(explored.tree) {
        view_.home = explored.isExport ? std::string() : invocation.home;
        if (explored_.olderThanDays) {
            showOlderThan(explored_.olderThanDays);
        }
        if (explored_.isExport) {
            return;
        }
        lookUpNeverTouched();
        explored_.tree->chargeLast(lumo::OwnFiles::support(desk_.home));
        const std::string root(explored_.tree->entry(NamedTree::root).name);
        if (lumo::isInside(root, desk_.home) || lumo::isInside(desk_.home, root) || root == "/") {
            safeties_.emplace(explored_.tree, desk_.home);
            view_.safetyOf = [this](const NamedEntry& entry) { return safeties_->of(entry); };
        }
        measuring_.emplace(explored_.tree);
    }

    ~Session() { stop_.request_stop(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    ExitCode run() {
        while (!hasEnough_ && !platform::wasInterrupted()) {
            takeResults();
            draw();
            const Key key = screen_.key(isSoonMore() ? patienceAtFirst : patience);
            if (key.kind != Key::Kind::none) {
                press(key);
            } else if (!platform::isTerminal(platform::Stream::input)) {
                return ExitCode::failed; // Nobody is there any more.
            }
        }
        const ExitCode code = hasEnough_ ? ExitCode::done : ExitCode::interrupted;
        stop_.request_stop();
        if (work_) {
            work_->then.wait(); // A cleanup ends after the action in hand.
        }
        return code;
    }

  private:
    // What is seen.

    void draw() {
        view_.columns = screen_.columns();
        view_.rows = screen_.rows();
        view_.firstRow = scrolledTo(explorer_.cursor(), view_.firstRow, visibleRows(view_));
        view_.doing = doing();
        std::vector<ScreenLine> lines = overlay_ ? *overlay_ : explorerLines(explorer_, view_);
        if (!overlay_ && safeties_ && safeties_->find(patienceAtFirst)) {
            lines = explorerLines(explorer_, view_);
        }
        if (question_) {
            // Below what it is about, so that both are seen.
            const std::vector<ScreenLine> asked = question_->lines(std::max<std::size_t>(view_.rows, 6) - 3);
            lines.resize(view_.rows - std::min(view_.rows, asked.size()));
            lines.insert(lines.end(), asked.begin(), asked.end());
        }
        screen_.show(lines);
    }

    std::optional<std::string> doing() {
        if (work_) {
            return work_->doing;
        }
        return measuring_ ? std::optional(measuring_->text()) : std::nullopt;
    }

    void say(std::string message, bool isProblem = false) {
        view_.message = std::move(message);
        view_.isProblem = isProblem;
    }

    // What the background brings.

    /// Nothing was found yet.
    [[nodiscard]] bool isBare() const { return measuring_ && explorer_.rows().empty(); }

    [[nodiscard]] bool isSoonMore() const { return isBare() || (safeties_ && safeties_->isFinding()); }

    void takeResults() {
        if (measuring_ && measuring_->isOver()) {
            view_.unreadableCount = measuring_->unreadableCount();
            measuring_.reset();
            explorer_.refresh();
        }
        if (work_ && work_->then.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
            const std::function<void()> then = work_->then.get();
            work_.reset();
            then();
        }
        // Reading a folder of very many entries takes a while: never longer than the time between.
        const auto now = std::chrono::steady_clock::now();
        if (measuring_ && now >= nextRefresh_) {
            explorer_.refresh();
            const auto took = std::chrono::steady_clock::now() - now;
            nextRefresh_ = now + std::max<std::chrono::steady_clock::duration>(
                                     isBare() ? patienceAtFirst : 2 * patience, took * 8);
        }
    }

    template <class Do>
    void begin(std::string doing, Do&& work) {
        work_.emplace(Work{std::move(doing), std::async(std::launch::async, std::forward<Do>(work))});
    }

    // What is typed.

    void press(const Key& key) {
        if (key.kind == Key::Kind::resized) {
            return;
        }
        if (question_) {
            answer(key);
        } else if (overlay_) {
            overlay_.reset();
        } else if (view_.typedFilter) {
            typeFilter(key);
        } else {
            view_.message.clear();
            step(key);
        }
    }

    void answer(const Key& key) {
        const std::function<void()> yes = std::move(question_->yes);
        question_.reset();
        if (key.text == "y" || key.text == "Y" || key.text == "s" || key.text == "S") {
            yes();
        } else {
            say(Words{"no se ha tocado nada", "nothing was touched"}.in());
        }
    }

    void typeFilter(const Key& key) {
        if (key.kind == Key::Kind::enter) {
            view_.typedFilter.reset();
            return;
        }
        if (key.kind == Key::Kind::escape) {
            view_.typedFilter.reset();
            explorer_.setFilter({});
            return;
        }
        view_.typedFilter = typedBehind(std::move(*view_.typedFilter), key);
        explorer_.setFilter(*view_.typedFilter);
    }

    void step(const Key& key) {
        const auto page = static_cast<std::ptrdiff_t>(visibleRows(view_));
        switch (key.kind) {
        case Key::Kind::up:
            return explorer_.moveBy(-1);
        case Key::Kind::down:
            return explorer_.moveBy(1);
        case Key::Kind::pageUp:
            return explorer_.moveBy(-page);
        case Key::Kind::pageDown:
            return explorer_.moveBy(page);
        case Key::Kind::home:
            return explorer_.moveTo(0);
        case Key::Kind::end:
            return explorer_.moveTo(explorer_.rows().size());
        case Key::Kind::right:
        case Key::Kind::enter:
            return goIn();
        case Key::Kind::left:
        case Key::Kind::backspace:
            explorer_.leave();
            return;
        case Key::Kind::escape:
            explorer_.filter().empty() ? explorer_.clearMarks() : explorer_.setFilter({});
            return;
        case Key::Kind::character:
            return command(key.text.size() == 1 ? key.text.front() : '\0');
        case Key::Kind::resized:
        case Key::Kind::none:
            return;
        }
    }

    void showOlderThan(std::optional<std::int64_t> days) {
        explorer_.setOlderThan(days, desk_.now());
        view_.firstRow = 0;
        if (days && explored_.isExport && explorer_.tree().entry(NamedTree::root).sums.modified == 0) {
            say(Words{"esta exportación no tiene fechas (ncdu las guarda con -e)",
                      "this export has no dates (ncdu keeps them with -e)"}
                    .in(),
                true);
        }
    }

    void goIn() { view_.firstRow = explorer_.enter() ? 0 : view_.firstRow; }

    void command(char letter) {
        switch (letter) {
        case 'q':
            hasEnough_ = true;
            return;
        case '?':
            overlay_ = explorerHelp();
            return;
        case 'k':
            return step({Key::Kind::up});
        case 'j':
            return step({Key::Kind::down});
        case 'l':
            return step({Key::Kind::right});
        case 'h':
            return step({Key::Kind::left});
        case '/':
            view_.typedFilter = explorer_.filter();
            return;
        case 's':
            return explorer_.setOrder(
                static_cast<ExplorerOrder>((static_cast<int>(explorer_.order()) + 1) % 4));
        case 'a':
            return showOlderThan(nextAge(explorer_.olderThanDays()));
        case ' ':
            return mark();
        default:
            return act(letter);
        }
    }

    void mark() {
        auto reason = explorer_.toggleMark();
        const NamedEntry* const entry = explorer_.current();
        if (!reason && entry != nullptr && explorer_.isMarked(entry->index) && !explored_.isExport) {
            lookUpNeverTouched();
            reason = explorer_.whyNotMarked(entry->index);
        }
        if (reason) {
            return say(*reason, true);
        }
        explorer_.moveBy(1);
    }

    void lookUpNeverTouched() {
        explorer_.protect(neverTouched(Preferences::load(desk_.home), desk_.home, explorer_.inQuestion()));
    }

    /// What reaches beyond the picture: to the disk and to other programs.
    void act(char letter) {
        static constexpr std::string_view acts = "duier";
        if (acts.find(letter) == std::string_view::npos || letter == '\0') {
            return;
        }
        if (work_) {
            return say(Words{"espera: {}", "wait: {}"}.with(work_->doing), true);
        }
        if (explored_.isExport) {
            return say(Words{"una exportación solo se mira", "an export can only be looked at"}.in(), true);
        }
        switch (letter) {
        case 'd':
            return offerToSetAside();
        case 'u':
            return offerToUndo();
        case 'i':
            return explain();
        case 'e':
            return openOutside();
        default:
            return measureFolder();
        }
    }

    void offerToSetAside() {
        if (const auto reason = whyNotAside(explorer_, desk_.home)) {
            return say(*reason, true);
        }
        const std::vector<std::string> paths = explorer_.tree().pathsOf(explorer_.chosen());
        if (paths.empty()) {
            return;
        }
        begin(Words{"pesando lo marcado", "weighing what is marked"}.in(), [this, paths] {
            auto offer = std::make_shared<const AsideOffer>(asideOffer(paths, desk_, *explored_.tree));
            dropMissing(*explored_.tree, paths);
            return std::function<void()>([this, offer] {
                explorer_.refresh();
                askToSetAside(offer);
            });
        });
    }

    void askToSetAside(const std::shared_ptr<const AsideOffer>& offer) {
        if (offer->goingCount == 0) {
            const auto& first = offer->items.front();
            return say(lumo::revealed(lumo::fileName(first.path)) + ": " + first.reason.value_or(""), true);
        }
        question_ = Question{[this, offer](std::size_t most) { return asideQuestion(*offer, view_, most); },
                             [this, offer] {
                                 begin(Words{"apartando", "setting aside"}.in(), [this, offer] {
                                     Told told = setAside(*offer, desk_, {.stop = stop_.get_token()});
                                     dropMissing(*explored_.tree, told.paths);
                                     return std::function<void()>([this, told] {
                                         if (told.isWhole) {
                                             explorer_.clearMarks();
                                         }
                                         tell(told, told.isWhole ? emptyHint() : std::string());
                                     });
                                 });
                             }};
    }

    void offerToUndo() {
        begin(Words{"mirando qué se puede deshacer", "looking what can be undone"}.in(), [this] {
            return std::function<void()>([this, items = undoOffer(desk_)] { askToUndo(items); });
        });
    }

    void askToUndo(const lumo::Result<std::vector<lumo::TrashedItem>>& items) {
        if (!items) {
            return say(items.error().message, true);
        }
        if (items->empty()) {
            return say(Words{"no hay nada que deshacer", "there is nothing to undo"}.in());
        }
        question_ = Question{
            [this, items = *items](std::size_t most) { return undoQuestion(items, view_.home, most); },
            [this, items = *items] {
                begin(Words{"devolviendo", "putting back"}.in(), [this, items] {
                    const Told told = putBack(items, desk_);
                    for (const std::string& path : told.paths) {
                        measureAnew(*explored_.tree, path, stop_.get_token());
                    }
                    return std::function<void()>([this, told] { tell(told); });
                });
            }};
    }

    void showChanged() {
        if (safeties_) {
            safeties_->askAgain();
        }
        explorer_.refresh();
    }

    void tell(const Told& told, const std::string& hint = {}) {
        showChanged();
        say(told.text + hint, !told.isWhole);
    }

    void explain() {
        const NamedEntry* entry = explorer_.current();
        const std::string path = entry != nullptr ? explorer_.tree().pathOf(entry->index) : explorer_.path();
        const auto unread = unreadLine(entry != nullptr ? *entry : explorer_.folder());
        begin(Words{"mirando qué es", "looking what it is"}.in(), [this, path, unread] {
            if (platform::isMissing(path)) {
                dropMissing(*explored_.tree, {path});
                return std::function<void()>([this, path] {
                    explorer_.refresh();
                    say(goneText(path), true);
                });
            }
            auto lines = whatItIs(path, desk_.home, desk_.now(), stop_.get_token());
            if (unread) {
                lines.push_back(*unread);
            }
            return std::function<void()>(
                [this, path, lines] { overlay_ = whatItIsLines(path, view_.home, lines, view_.columns); });
        });
    }

    void openOutside() {
        const NamedEntry* entry = explorer_.current();
        if (entry == nullptr) {
            return;
        }
        if (!platform::hasScreen()) {
            return say(
                Words{"aquí no hay escritorio con el que abrirlo", "there is no desktop here to open it"}
                    .in(),
                true);
        }
        const std::string path = explorer_.tree().pathOf(entry->index);
        begin(Words{"abriendo", "opening"}.in(), [this, path] {
            const bool isOpened = platform::runTool({"xdg-open", path}, desk_.home).status == 0;
            return std::function<void()>([this, isOpened] {
                if (!isOpened) {
                    say(Words{"el escritorio no ha podido abrirlo", "the desktop could not open it"}.in(),
                        true);
                }
            });
        });
    }

    void measureFolder() {
        const std::string path = explorer_.path();
        if (explorer_.isAtTop()) {
            return measureAll(path);
        }
        begin(measuringAnew.in(), [this, path] {
            measureAnew(*explored_.tree, path, stop_.get_token());
            return std::function<void()>([this, path] {
                showChanged();
                if (const auto entry = explorer_.tree().entryAt(path)) {
                    explorer_.goTo(*entry);
                    explorer_.enter();
                }
            });
        });
    }

    void measureAll(const std::string& path) {
        if (measuring_) {
            return say(Words{"espera: todavía se mide", "wait: it is still being measured"}.in(), true);
        }
        begin(measuringAnew.in(), [this, path] {
            const auto tree = std::make_shared<NamedTree>(path);
            tree->chargeLast(lumo::OwnFiles::support(desk_.home));
            const auto unreadable =
                lumo::measureInto(*tree, path, NamedTree::root, nullptr, stop_.get_token());
            return std::function<void()>([this, tree, unreadable] {
                explored_.tree = tree;
                view_.unreadableCount = unreadable;
                explorer_.goOnIn(tree);
                if (safeties_) {
                    safeties_.emplace(tree, desk_.home);
                }
            });
        });
    }

    struct Question {
        std::function<std::vector<ScreenLine>(std::size_t most)> lines;
        std::function<void()> yes;
    };

    Explored explored_;
    const Desk desk_;
    Screen& screen_;
    Explorer explorer_;
    ExplorerView view_;
    std::optional<std::vector<ScreenLine>> overlay_; ///< Shown instead until a key is pressed.
    std::optional<Question> question_;
    bool hasEnough_ = false;
    std::chrono::steady_clock::time_point nextRefresh_ = {};
    std::optional<ScreenSafeties> safeties_; ///< None far from the home.

    // Last, so that what runs has ended before anything that it uses goes.
    std::stop_source stop_;
    std::optional<TreeMeasuring> measuring_;
    std::optional<Work> work_;
};

} // namespace

ExitCode explore(const Explored& explored, const Invocation& invocation) {
    platform::noteInterrupts();
    platform::noteHangups();
    const std::unique_ptr<Screen> screen = Screen::open(invocation.hasColor);
    if (!screen) {
        return complain(Words{"no sé dibujar en este terminal; mira la variable TERM",
                              "I cannot draw on this terminal; see the variable TERM"}
                            .in(),
                        ExitCode::usage);
    }
    return Session(explored, invocation, *screen).run();
}

} // namespace tarvo
