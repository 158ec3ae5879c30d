#include "LumoCore/Basics/ToolOutput.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

TEST(ToolOutput, ExplainsAFailureByTheLastLineThatSaysSomething) {
    for (const auto& [output, detail] : std::vector<std::pair<std::string, std::string>>{
             {"", "code 3"},
             {" \r\n\t\n\n", "code 3"},
             {"npm ERR!", "npm ERR!"},
             {"none\none\r\n  two words \t\r\n \r\n\n", "  two words"},
             {"\nfirst", "first"}}) {
        EXPECT_EQ(lumo::failureDetail(output, 3, lumo::Language::en), detail) << output;
    }
    EXPECT_EQ(lumo::failureDetail("\n", 137, lumo::Language::es), "código 137");
}
