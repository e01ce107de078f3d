#include "tests/Support.hh"
#include "tool/commands/Commands.hh"
#include "tool/picture/TextWidth.hh"
#include "tool/picture/TreeLayout.hh"

#include <algorithm>
#include <map>
#include <random>
#include <regex>
#include <set>

namespace {

/// Returns what `tree` prints for a text, without the complaint that the library refuses it.
std::string drawn(const std::string &text, TreeOptions options) {
    const TemporaryFile file(text);
    options.fileName = file.path();
    std::ostringstream out, err;
    EXPECT_EQ(tree(options, Console{out, err}), wrong); // for want of the MOM
    return out.str();
}

/// A random tree whose root is ObjectRoot, as FED text, and the classes in it with their levels.
class RandomModel {
public:
    explicit RandomModel(unsigned seed) : _random(seed) {}

    std::string text() { return "(FED (Federation F) (FEDversion v) (objects " + aClass("ObjectRoot", "", 1) + "))"; }
    const std::map<std::string, std::size_t> &levels() const { return _levels; }

private:
    std::size_t upTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(_random); }

    std::string aClass(const std::string &name, const std::string &prefix, std::size_t level) {
        _levels[prefix + name] = level;
        std::string clause = "(class " + name;
        for (std::size_t member = upTo(6); member > 2; --member)
            clause += " (attribute " + name + std::to_string(member) + " reliable receive)";
        for (std::size_t i = level < 6 ? upTo(4) : 0; i > 0; --i) {
            const std::string own = "N" + std::to_string(_levels.size()) + std::string(upTo(25), "iWx.-"[upTo(2)]);
            clause += aClass(level == 1 && i == 1 ? "Manager" : own, prefix + name + '.', level + 1);
        }
        return clause + ')';
    }

    std::mt19937 _random;
    std::map<std::string, std::size_t> _levels;
};

/// The classes that a picture shows: those down to a depth that are not in the MOM.
std::set<std::string> shownClasses(const std::map<std::string, std::size_t> &levels, std::size_t depth) {
    std::set<std::string> classes;
    for (const auto &[name, level] : levels)
        if ((depth == 0 || level <= depth) && name.rfind("ObjectRoot.Manager.", 0) != 0)
            classes.insert(name);
    return classes;
}

struct DrawnBox {
    std::string fullName;
    TreeBox box;
};

/// The boxes of an SVG document, which has only one tree.
std::vector<DrawnBox> boxesIn(const std::string &svg) {
    static const std::regex kBox("<title>([^<, ]*)[^<]*</title><rect x=\"(\\d+)\" y=\"(\\d+)\" width=\"(\\d+)\" "
                                 "height=\"(\\d+)\"");
    std::vector<DrawnBox> boxes;
    for (std::sregex_iterator at(svg.begin(), svg.end(), kBox), end; at != end; ++at)
        boxes.push_back(
            {at->str(1),
             {0, std::stol(at->str(4)), std::stol(at->str(5)), std::stol(at->str(2)), std::stol(at->str(3))}});
    return boxes;
}

bool overlap(const TreeBox &a, const TreeBox &b) {
    return a.x < b.right() && b.x < a.right() && a.y < b.y + b.height && b.y < a.y + a.height;
}

} // namespace

TEST(Picture, ShowsEachClassOnceInABoxOfItsOwn) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        RandomModel model(seed);
        TreeOptions options;
        options.format = TreeOptions::svg;
        options.members = seed % 2 == 0;
        options.depth = seed % 5;
        const std::string text = model.text();
        SCOPED_TRACE(text);
        const std::vector<DrawnBox> boxes = boxesIn(drawn(text, options));
        std::multiset<std::string> names;
        for (const DrawnBox &drawn : boxes)
            names.insert(drawn.fullName);
        const std::set<std::string> expected = shownClasses(model.levels(), options.depth);
        ASSERT_EQ(names, std::multiset<std::string>(expected.begin(), expected.end()));
        for (std::size_t i = 0; i < boxes.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                ASSERT_FALSE(overlap(boxes[i].box, boxes[j].box)) << boxes[i].fullName << ' ' << boxes[j].fullName;
    }
}

TEST(Picture, CentresParentsOnTheirChildren) {
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::vector<TreeBox> boxes;
        std::vector<std::size_t> path; // from a root to the last box
        for (std::size_t i = random() % 40; boxes.size() <= i; path.push_back(boxes.size() - 1)) {
            path.resize(std::min<std::size_t>(path.size(), random() % 6));
            boxes.push_back({path.empty() ? kNone : path.back(), long(random() % 90), 2 * long(random() % 50)});
        }
        const TreeSize size = layOut(boxes, {40, 8, 3});
        std::map<std::size_t, std::pair<long, long>> children; // the middles of the first and last
        for (const TreeBox &box : boxes) {
            ASSERT_TRUE(box.x >= 0 && box.right() <= size.width && box.y >= 0 && box.y + box.height <= size.height);
            if (box.parent == kNone)
                continue;
            ASSERT_GE(box.x, boxes[box.parent].right() + 40);
            const auto [found, isFirst] = children.try_emplace(box.parent, box.middle(), 0);
            ASSERT_TRUE(isFirst || found->second.second < box.middle()); // siblings keep their order
            found->second.second = box.middle();
        }
        for (const auto &[parent, middles] : children) // up to half a pixel
            ASSERT_LE(std::abs(middles.first + middles.second - 2 * boxes[parent].middle()), 1);
    }
    std::vector<TreeBox> none;
    EXPECT_EQ(layOut(none, {40, 8, 3}).height, 0);
    EXPECT_EQ(layOut(none, {40, 8, 3}).width, 0);
}

TEST(Picture, GrowsWithTheNumberOfClassesOnly) {
    constexpr std::size_t kWide = 20000, kDeep = 256; // the greatest depth that the library accepts
    std::string wide = "(class Root", deep;
    for (std::size_t i = 0; i < kWide; ++i)
        wide += "(class C" + std::to_string(i) + ")";
    for (std::size_t i = 0; i < kDeep; ++i)
        deep += "(class D";
    deep += std::string(kDeep, ')');
    for (const auto &[classes, count, bytesEach] :
         {std::tuple(wide + ")", kWide + 1, 300), std::tuple(deep, kDeep, 900)})
        for (const TreeOptions::Format format : {TreeOptions::svg, TreeOptions::dot, TreeOptions::mermaid}) {
            TreeOptions options;
            options.format = format;
            const std::string picture = drawn("(FED (Federation F) (FEDversion v) (objects " + classes + "))", options);
            EXPECT_LT(picture.size(), count * std::size_t(bytesEach));
            if (format == TreeOptions::svg) {
                const std::vector<DrawnBox> boxes = boxesIn(picture);
                ASSERT_EQ(boxes.size(), count);
                EXPECT_NE(boxes[count - 1].box.x, boxes[0].box.x);
            }
        }
}

TEST(Picture, LeavesRoomForTheWidestCommonFont) {
    // Measured in DejaVu Sans, in hundredths of a pixel at a size of 13.
    for (const auto &[text, width] :
         {std::pair("ObjectRoot", 7180), std::pair("MWmw@%", 7272), std::pair("ijlI|", 1905),
          std::pair("ScheduledDeparture", 13396), std::pair("Höhe", 3397), std::pair("ЩЖЮМФ", 6466)}) {
        EXPECT_GE(textWidth(text, 13, false) * 100, width) << text;
        EXPECT_LE(textWidth(text, 13, false) * 100, width * 3 / 2) << text;
    }
}

TEST(Picture, IsAsRecorded) {
    forEachCase("pictures.txt", [](const std::string &text) {
        std::istringstream words(text.substr(0, text.find('\n')));
        TreeOptions options;
        for (std::string word; words >> word;) {
            if (word == "--members")
                options.members = true;
            else if (word == "--depth")
                words >> options.depth;
            else if (word == "dot" || word == "mermaid")
                options.format = word == "dot" ? TreeOptions::dot : TreeOptions::mermaid;
            else if (word == "svg")
                options.format = TreeOptions::svg;
            else
                options.className = word;
        }
        const std::string picture = drawn(text.substr(text.find('\n') + 1), options);
        const std::size_t style = picture.find("<style>\n"), end = picture.find("</style>\n");
        return style == std::string::npos ? picture : picture.substr(0, style) + picture.substr(end + 9);
    });
}
