#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace lumo;
using tarvo::testing::TempHome;

namespace {

struct Expected {
    std::string rule;
    std::string safety;
    std::string way;
    std::vector<std::string> files; ///< Below the home.
};

/// The rows of Tests/homes/linux.txt.
std::vector<Expected> rows() {
    std::ifstream file(HOMES_FOLDER "/linux.txt");
    std::vector<Expected> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            continue;
        }
        std::istringstream words(line);
        Expected row;
        words >> row.rule >> row.safety >> row.way >> std::ws;
        for (std::string name; std::getline(words, name, ',');) {
            row.files.push_back(name);
            words >> std::ws;
        }
        rows.push_back(row);
    }
    return rows;
}

std::string wayOf(const Finding& finding) {
    constexpr std::array<std::string_view, 4> ways{"command", "hand", "contents", "items"};
    return std::string(ways.at(finding.cleanup.index()));
}

void fill(const TempHome& home, const std::vector<Expected>& rows) {
    for (const Expected& row : rows) {
        for (const std::string& name : row.files) {
            if (name.ends_with('*')) {
                home.program(name.substr(0, name.size() - 1), "exit 0");
            } else {
                home.file(name, 4096);
            }
        }
    }
}

} // namespace

TEST(LinuxHome, IsKnownInAllItsPlaces) {
    const TempHome home;
    const std::vector<Expected> expected = rows();
    ASSERT_GT(expected.size(), 100U);
    fill(home, expected);
    const ScanReport report =
        Scanner::scan(RuleCatalog::inHome(HomePlaces(home.path(), System::linux), Language::en),
                      {.home = home.path(), .unclassifiedMinimumBytes = 1}, {})
            .value();
    for (const Expected& row : expected) {
        const auto finding = std::ranges::find(report.findings, row.rule, &Finding::ruleID);
        ASSERT_NE(finding, report.findings.end()) << row.rule;
        EXPECT_EQ(nameOf(finding->safety), row.safety) << row.rule;
        EXPECT_EQ(wayOf(*finding), row.way) << row.rule;
        for (std::string name : row.files) {
            std::erase(name, '*');
            EXPECT_TRUE(std::ranges::any_of(
                finding->paths, [&](const std::string& path) { return isInside(home.path(name), path); }))
                << row.rule << " " << name;
        }
    }
    EXPECT_EQ(report.findings.size(), expected.size());
    for (const UnclassifiedItem& item : report.unclassified) {
        ADD_FAILURE() << "unknown: " << item.path;
    }
}
