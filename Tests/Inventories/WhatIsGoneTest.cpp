#include "LumoCore/Inventories/Inventories.h"
#include "LumoCore/Inventories/UnusedApps.h"
#include "Tests/support/InventoryQuery.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

constexpr std::int64_t longAgo = 1700000000;

/// A home beside a system of its own: nothing is read of this machine's but its programs.
std::map<std::string, DetailItem> itemsOf(const TempHome& home, InventoryKind kind) {
    std::map<std::string, DetailItem> items;
    for (const DetailItem& item : Inventories::find(kind, queryOf(home)).items) {
        EXPECT_EQ(Inventories::itemWith(item.id, queryOf(home)), item);
        items[item.id] = item;
    }
    return items;
}

void setUsed(const TempHome& home, const std::string& name, std::int64_t seconds) {
    const std::array<timespec, 2> times{timespec{.tv_sec = seconds}, timespec{.tv_sec = seconds}};
    ASSERT_EQ(utimensat(AT_FDCWD, home.path(name).c_str(), times.data(), 0), 0) << name;
}

/// Listens where snapd does and gives everybody the same answer.
class FakeSnapd final {
  public:
    FakeSnapd(const TempHome& home, std::string answer)
        : answer_(std::move(answer)), socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const std::string path = home.folder("system/run") + "/snapd.socket";
        sockaddr_un place = {};
        place.sun_family = AF_UNIX;
        path.copy(place.sun_path, sizeof place.sun_path - 1);
        EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        EXPECT_EQ(listen(socket_, 8), 0);
        thread_ = std::jthread([this] { serve(); });
    }
    ~FakeSnapd() {
        shutdown(socket_, SHUT_RDWR);
        thread_.join();
        close(socket_);
    }
    FakeSnapd(const FakeSnapd&) = delete;
    FakeSnapd& operator=(const FakeSnapd&) = delete;

  private:
    void serve() const {
        for (int client = accept(socket_, nullptr, nullptr); client >= 0;
             client = accept(socket_, nullptr, nullptr)) {
            std::string asked;
            std::array<char, 512> buffer = {};
            while (!asked.ends_with("\r\n\r\n")) {
                const ssize_t count = read(client, buffer.data(), buffer.size());
                ASSERT_GT(count, 0);
                asked.append(buffer.data(), static_cast<std::size_t>(count));
            }
            EXPECT_THAT(asked, StartsWith("GET /v2/snaps HTTP/1.0\r\nHost: localhost\r\n"));
            EXPECT_EQ(write(client, answer_.data(), answer_.size()), std::ssize(answer_));
            close(client);
        }
    }

    std::string answer_;
    int socket_;
    std::jthread thread_;
};

/// A snap as snapd lists it.
std::string snapJson(const std::string& name, const std::string& type, const std::string& app,
                     const std::string& installed = "2023-05-01T10:00:00.5+02:00") {
    return R"({"id": "x", "title": "The )" + name + R"(", "name": ")" + name + R"(", "installed-size": 110000,
        "install-date": ")" +
           installed + R"(", "status": "active", "type": ")" + type + R"(", "apps": [{"snap": ")" + name +
           R"(", "name": "a")" + app + "}]}";
}

std::string withDesktopEntry(const std::string& name) {
    return R"(, "desktop-file": "/var/lib/snapd/desktop/applications/)" + name + "_a.desktop\"";
}

} // namespace

TEST(UnusedApps, AmongSnapsAreThoseThatAPersonStartsAndNobodyDid) {
    // Snap applications were never among them.
    const TempHome home;
    std::string list;
    for (const std::string name : {"paint", "seen", "young", "silent"}) {
        list += snapJson(name, "app", withDesktopEntry(name)) + ",";
    }
    list += snapJson("lxd", "app", withDesktopEntry("lxd") + R"(, "daemon": "simple")") + "," +
            snapJson("core", "base", withDesktopEntry("core")) + "," + snapJson("tool", "app", "") + "," +
            snapJson("--purge", "app", withDesktopEntry("p")) + "," +
            snapJson("renewed", "app", withDesktopEntry("renewed"), "2026-03-13T00:00:00Z") + "," +
            snapJson("fresh", "app", withDesktopEntry("fresh"), "2026-03-13T00:00:00Z");
    for (const std::string name : {"paint", "seen", "young", "lxd", "core", "tool", "renewed", "fresh"}) {
        home.file("snap/" + name + "/common/x", 5000);
        setUsed(home, "snap/" + name + "/common/x",
                name == "young" ? noon.time_since_epoch() / std::chrono::seconds(1) : longAgo);
    }
    home.fileWith(".local/share/gnome-shell/application_state",
                  "<application id=\"seen_a.desktop\" last-seen=\"" +
                      std::to_string(noon.time_since_epoch() / std::chrono::seconds(1)) +
                      "\"/><application id=\"renewed_a.desktop\" last-seen=\"1700000001\"/>");
    {
        const FakeSnapd snapd(home,
                              "HTTP/1.0 200 OK\r\n\r\n{\"type\": \"sync\", \"result\": [" + list + "]}");
        const auto items = itemsOf(home, InventoryKind::unused);
        EXPECT_THAT(items, UnorderedElementsAre(Key("app:snap:paint"), Key("app:snap:renewed")));
        const DetailItem& paint = items.at("app:snap:paint");
        EXPECT_EQ(paint.name, "The paint");
        EXPECT_EQ(paint.bytes, 110000);
        EXPECT_THAT(paint.detail, StartsWith("last used Nov 14, 2023; its data, apart: "));
        EXPECT_EQ(paint.blockedBecause, "needs an administrator: sudo snap remove paint");
    }
    // Nobody listens at the socket any more.
    EXPECT_EQ(Inventories::find(InventoryKind::unused, queryOf(home)).unreadableCount, 1);
    ASSERT_EQ(unlink(home.path("system/run/snapd.socket").c_str()), 0);
    for (const char* answer :
         {"HTTP/1.0 200 OK\r\n\r\n[", "HTTP/1.0 200 OK\r\n\r\n{\"result\": [{\"name\": 1}]}"}) {
        const FakeSnapd snapd(home, answer);
        EXPECT_THAT(Inventories::find(InventoryKind::unused, queryOf(home)).items, IsEmpty());
        ASSERT_EQ(unlink(home.path("system/run/snapd.socket").c_str()), 0);
    }
}

TEST(Inventories, AnswerEachUnderItsOwnName) {
    const TempHome home;
    for (std::size_t index = 0; index < inventoryKindCount; ++index) {
        const auto kind = static_cast<InventoryKind>(index);
        const Inventory found = Inventories::find(kind, queryOf(home));
        EXPECT_EQ(found.kind, kind);
        EXPECT_THAT(found.items, IsEmpty()) << nameOf(kind);
        EXPECT_EQ(inventoryKindNamed(commandNameOf(kind, Language::es)), kind);
        EXPECT_EQ(inventoryKindNamed(commandNameOf(kind, Language::en)), kind);
        EXPECT_EQ(inventoryKindOfID(std::string(idPrefixOf(kind)) + "x"), kind);
    }
    EXPECT_FALSE(Inventories::itemWith("proyecto:a/b", queryOf(home)));
    EXPECT_EQ(decode<Inventory>(encode(Inventories::find(InventoryKind::cloud, queryOf(home))))->kind,
              InventoryKind::cloud);
}

TEST(Leftovers, AreOfWhatIsCertainlyGone) {
    const TempHome home;
    home.files({".var/app/org.gone.App/data/x", ".var/app/org.here.App/data/x", "snap/gonesnap/common/x",
                "snap/heresnap/common/x", ".config/removedpkg/x", ".config/herepkg/x", ".config/whoknows/x",
                ".config/JetBrains/IdeaIC2023.3/x", ".config/JetBrains/IdeaIC2024.1/x",
                ".config/JetBrains/PyCharm2022.1/x", ".config/JetBrains/consent/x"},
               5000);
    home.folders(
        {".local/share/flatpak/app/org.here.App", "system/var/lib/flatpak/app", "system/snap/heresnap"});
    home.fileWith("system/var/lib/dpkg/status",
                  "Package: removedpkg\nStatus: deinstall ok config-files\nVersion: 1\n\n"
                  "Package: herepkg\nStatus: install ok installed\nVersion: 1\n");
    const std::string applications = ".local/share/applications/";
    home.fileWith(applications + "gone.desktop",
                  "[Desktop Entry]\nExec=\"" + home.path("a b.AppImage") + "\" %U\n");
    home.fileWith(applications + "here.desktop",
                  "[Desktop Entry]\nExec=" + home.file("c.AppImage", 1) + "\n");
    home.fileWith(applications + "other.desktop", "[Desktop Entry]\nExec=/no/such/program\n");
    const auto items = itemsOf(home, InventoryKind::leftovers);
    EXPECT_THAT(items, UnorderedElementsAre(Key("resto:.var/app/org.gone.App"), Key("resto:snap/gonesnap"),
                                            Key("resto:.config/removedpkg"),
                                            Key("resto:.config/JetBrains/IdeaIC2023.3"),
                                            Key("resto:.local/share/applications/gone.desktop")));
    EXPECT_EQ(items.at("resto:.config/JetBrains/IdeaIC2023.3").detail,
              "of an older version; the newest is IdeaIC2024.1");
}

TEST(UnusedApps, NeedEvidenceThatNobodyUsedThem) {
    const TempHome home;
    for (const std::string name : {"old", "young", "silent", "seen"}) {
        home.file(".local/share/flatpak/app/org." + name + "/x", 9000);
        setUsed(home, ".local/share/flatpak/app/org." + name, longAgo);
    }
    for (const std::string name : {"old", "young", "seen"}) {
        home.file(".var/app/org." + name + "/config/x", 5000);
        setUsed(home, ".var/app/org." + name + "/config/x",
                name == "young" ? noon.time_since_epoch() / std::chrono::seconds(1) : longAgo);
    }
    home.fileWith(".local/share/gnome-shell/application_state",
                  "<application-state>\n <application id=\"org.seen.desktop\" score=\"3\" last-seen=\"" +
                      std::to_string(noon.time_since_epoch() / std::chrono::seconds(1)) +
                      "\"/>\n <application id=\"tool.desktop\" score=\"1\" last-seen=\"1700000001\"/>");
    for (const std::string name : {"Old.AppImage", "Young.AppImage"}) {
        home.file("Applications/" + name, 9000);
        setUsed(home, "Applications/" + name,
                name == "Old.AppImage" ? longAgo : noon.time_since_epoch() / std::chrono::seconds(1));
    }
    for (const std::string name : {"tool", "daily"}) {
        home.fileWith("system/usr/share/applications/" + name + ".desktop",
                      "[Desktop Entry]\nType=Application\nName=The " + name + "\nExec=" + name + " %U\n");
        home.program("system/usr/bin/" + name, "true");
        setUsed(home, "system/usr/bin/" + name,
                name == "tool" ? longAgo : noon.time_since_epoch() / std::chrono::seconds(1));
        home.fileWith("system/var/lib/dpkg/info/" + name + "-pkg:amd64.list",
                      "/.\n/usr/share/applications/" + name + ".desktop\n");
    }
    home.fileWith("system/var/lib/dpkg/status",
                  "Package: tool-pkg\nStatus: install ok installed\nVersion: 1\n"
                  "Installed-Size: 2000\n\nPackage: daily-pkg\nStatus: install ok "
                  "installed\nVersion: 1\nInstalled-Size: 2000\n");
    const auto items = itemsOf(home, InventoryKind::unused);
    EXPECT_THAT(items, UnorderedElementsAre(Key("app:flatpak:org.old"), Key("app:package:tool-pkg"),
                                            Key("app:appimage:Applications/Old.AppImage")));
    EXPECT_THAT(items.at("app:flatpak:org.old").detail,
                StartsWith("last used Nov 14, 2023; its data, apart: "));
    const DetailItem& tool = items.at("app:package:tool-pkg");
    EXPECT_EQ(tool.name, "The tool");
    EXPECT_EQ(tool.bytes, 2048000);
    EXPECT_EQ(tool.blockedBecause, "needs an administrator: sudo apt remove tool-pkg");
    EXPECT_THAT(UnusedApps::launchesIn("<application id=\"a.desktop\" last-seen=\"x\"/><application id"),
                IsEmpty());
}

TEST(SystemItems, SayWhatAnAdministratorCanRun) {
    const TempHome home;
    home.files({"system/var/cache/apt/archives/a.deb", "system/var/log/journal/m/x.journal",
                "system/var/lib/snapd/snaps/tool_3.snap", "system/var/lib/snapd/snaps/tool_4.snap",
                "system/var/lib/snapd/snaps/unknown_1.snap"},
               5000);
    home.folder("system/var/crash");
    home.link("system/snap/tool/current", "4");
    home.fileWith("system/proc/sys/kernel/osrelease", "6.1.0-20-amd64\n");
    std::string status;
    for (const char* version : {"6.1.0-18-amd64", "6.1.0-20-amd64", "6.1.0-9-amd64", "6.1.0-21-amd64"}) {
        status += std::string("Package: linux-image-") + version +
                  "\nStatus: install ok installed\nVersion: 1\nInstalled-Size: 400000\n\n";
    }
    home.fileWith("system/var/lib/dpkg/status",
                  status + "Package: linux-image-amd64\nStatus: install ok installed\nVersion: 1\n");
    const auto items = itemsOf(home, InventoryKind::system);
    EXPECT_THAT(items, UnorderedElementsAre(Key("sistema:apt"), Key("sistema:journal"),
                                            Key("sistema:snap:tool_3"), Key("sistema:kernel:6.1.0-18-amd64"),
                                            Key("sistema:kernel:6.1.0-9-amd64")));
    for (const auto& [id, item] : items) {
        EXPECT_THAT(item.blockedBecause.value_or(""), StartsWith("needs an administrator: sudo ")) << id;
        EXPECT_EQ(item.action.method, Method(method::TrashItems{})) << id;
    }
}
