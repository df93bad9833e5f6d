#include "core/Collection.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "support/Cases.h"

namespace {

using Texts = Collection<std::string>;

std::string ErrorOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const LookupError& error) {
        return error.what();
    }
    return "no error";
}

TEST(Collection, NamesAndPositionsFindTheSameObject) {
    Texts texts("thing");
    const std::string* first = &texts.Add("N0", std::make_unique<std::string>("0"));
    for (int i = 1; i < 1000; ++i) {
        texts.Add('N' + std::to_string(i), std::make_unique<std::string>(std::to_string(i)));
    }
    EXPECT_EQ(texts.Find(1), first);
    for (int i = 0; i < 1000; ++i) {
        const std::string name = 'N' + std::to_string(i);
        ASSERT_EQ(texts.At(name), name.substr(1));
        ASSERT_EQ(&texts.At(i + 1), texts.Find(name));
        ASSERT_EQ(texts.PositionOf(name), i + 1);
        ASSERT_EQ(texts.Names()[static_cast<std::size_t>(i)], name);
    }
    EXPECT_EQ(texts.Find("n0"), nullptr) << "names are exact";
    EXPECT_EQ(texts.PositionOf(""), 0);
    EXPECT_EQ(texts.Find(0), nullptr);
    EXPECT_EQ(texts.Find(1001), nullptr);
    texts.Clear();
    EXPECT_EQ(texts.Find("N0"), nullptr);
}

TEST(Collection, ErrorsNameWhatExists) {
    Texts texts("PLL");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(texts.At(1)); }), "no PLL exists");
    for (const char* name : {"RF", "IF", "Reference"}) {
        texts.Add(name, std::make_unique<std::string>(name));
    }
    for (const auto& [name, message] :
         Cases<std::string, std::string>{{"RF1", "no PLL called 'RF1': did you mean 'RF'?"},
                                         {"if", "no PLL called 'if': did you mean 'IF'?"},
                                         {"Refer", "no PLL called 'Refer': did you mean 'Reference'?"},
                                         {"Refrence", "no PLL called 'Refrence': did you mean 'Reference'?"},
                                         {"Transmitter", "no PLL called 'Transmitter'"},
                                         {std::string(81, 'x'), "no PLL called '" + std::string(80, 'x') + "...'"}}) {
        EXPECT_EQ(ErrorOf([&, wanted = name] { static_cast<void>(texts.At(wanted)); }), message);
    }
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(texts.At(4)); }), "no PLL number 4: 1 to 3 exist");
    EXPECT_NE(ErrorOf([&] { texts.Add("IF", std::make_unique<std::string>("second")); }), "no error");
    EXPECT_EQ(texts.Count(), 3);
    EXPECT_EQ(texts.At("IF"), "IF");
}

TEST(Collection, UnnamedObjectsHaveAnOrder) {
    Texts texts("command");
    texts.Add(std::make_unique<std::string>("b"));
    texts.Insert(1, std::make_unique<std::string>("a"));
    texts.Insert(3, std::make_unique<std::string>("d"));
    texts.Insert(3, std::make_unique<std::string>("c"));
    texts.Remove(2);
    std::string all;
    for (const std::string& text : texts) {
        all += text;
    }
    EXPECT_EQ(all, "acd");
}

}   // namespace
