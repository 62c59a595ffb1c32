// Any scene of the toolkit looks on a page as it does in a rendering. To look at the pairs of pictures, page
// on the left, set ORAVANE_PICTURES to a folder for them.
#include "tools/HeadlessRenderer.h"
#include "vectorize/PageFixture.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFMatrix.h>
#include <Inventor/fields/SoSFVec3f.h>
#include <Inventor/nodes/SoMarkerSet.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <vector>

namespace {

using namespace oravane_test;
using oravane::Picture;

constexpr int PIXELS = 200;
constexpr float PIXEL = 0.35f; // mm: a bit of a line pattern
constexpr float SIZE = PIXELS * PIXEL;

struct Row {
    std::string name, nodes, rendered;
    double differing = 0.5; ///< per cent of the picture's pixels
    bool isPixels = false, isFull = false, isBad = false;
};

std::string pageOf(SoVectorizeAction::HLHSRMode mode, SoNode *scene, float size = SIZE) {
    SoVectorizePSAction action;
    action.setStartPosition(0, 0, SoVectorizeAction::MILLIMETER);
    action.setDrawingDimensions(size, size, SoVectorizeAction::MILLIMETER);
    action.setNominalWidth(PIXEL, SoVectorizeAction::MILLIMETER);
    action.setPixelImageSize(PIXEL, SoVectorizeAction::MILLIMETER);
    action.setBorder(0);
    action.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS);
    action.setHLHSRMode(mode);
    action.enableLighting(1);
    return oravane_test::pageOf(action, scene);
}

/// The pages as Ghostscript shows them, in one run of it.
std::vector<Picture> printed(const std::vector<std::string> &pages) {
    const TemporaryFolder folder;
    std::string files;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::string file = folder.path(std::to_string(i) + ".ps");
        std::ofstream(file, std::ios::binary) << pages[i];
        files += " " + file;
    }
    const std::string log = folder.path("log"), extent = std::to_string(4 * PIXELS);
    // At four times the resolution and averaged, as the renderings are.
    const std::string command = "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dDownScaleFactor=4 -g" +
                                extent + "x" + extent + " -r" + std::to_string(4 * 25.4 / PIXEL) + " -o " +
                                folder.path("%d.png") + files + " > " + log + " 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(readFile(log), "");
    std::vector<Picture> pictures;
    for (std::size_t i = 1; i <= pages.size(); ++i)
        pictures.push_back(oravane::readPng(folder.path(std::to_string(i) + ".png")));
    return pictures;
}

/// Per cent of the pixels of `a` that are not like any of `b` there or beside.
double differing(const Picture &a, const Picture &b) {
    constexpr int SIMILAR = 40;
    const auto isLike = [](const auto &p, const auto &q) {
        return std::abs(p[0] - q[0]) <= SIMILAR && std::abs(p[1] - q[1]) <= SIMILAR &&
               std::abs(p[2] - q[2]) <= SIMILAR;
    };
    int count = 0;
    for (int y = 0; y < PIXELS; ++y)
        for (int x = 0; x < PIXELS; ++x) {
            bool isFound = false;
            for (int v = std::max(y - 1, 0); v <= std::min(y + 1, PIXELS - 1) && !isFound; ++v)
                for (int u = std::max(x - 1, 0); u <= std::min(x + 1, PIXELS - 1) && !isFound; ++u)
                    isFound = isLike(a.at(x, y), b.at(u, v));
            count += !isFound;
        }
    return 100.0 * count / (PIXELS * PIXELS);
}

void keepForTheEye(const std::string &name, const Picture &page, const Picture &rendering) {
    const char *folder = std::getenv("ORAVANE_PICTURES");
    if (!folder)
        return;
    Picture pair{2 * PIXELS, PIXELS, {}};
    for (int y = 0; y < PIXELS; ++y)
        for (const Picture *picture : {&page, &rendering})
            pair.rgb.insert(pair.rgb.end(), &picture->rgb[3 * PIXELS * y],
                            &picture->rgb[3 * PIXELS * y] + 3 * PIXELS);
    oravane::writePng(std::string(folder) + "/" + name + ".png", pair);
}

void expectAlike(const std::vector<Row> &rows) {
    std::vector<Picture> renderings;
    std::vector<std::string> pages;
    oravane::HeadlessRenderer smooth(4), plain(1);
    for (const Row &row : rows) {
        const Scene scene("Separator { " + row.nodes + " }"),
            shown("Separator { " + (row.rendered.empty() ? row.nodes : row.rendered) + " }");
        renderings.push_back((row.isPixels ? plain : smooth).render(shown, PIXELS, PIXELS));
        pages.push_back(
            pageOf(row.isFull ? SoVectorizeAction::HLHSR_FULL_SORT : SoVectorizeAction::HLHSR_Z_SORT, scene));
    }
    const std::vector<Picture> drawings = printed(pages);
    const Picture empty{PIXELS, PIXELS, std::vector<unsigned char>(3 * PIXELS * PIXELS, 255)};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        keepForTheEye(rows[i].name, drawings[i], renderings[i]);
        EXPECT_LE(differing(drawings[i], renderings[i]), rows[i].differing) << rows[i].name;
        EXPECT_LE(differing(renderings[i], drawings[i]), rows[i].differing) << rows[i].name;
        EXPECT_GT(differing(renderings[i], empty), 0.05) << rows[i].name << ": there is something to see";
    }
}

/// Coordinates of a square of 21 x 21 points.
std::string plate() {
    std::string points;
    for (int i = 0; i < 21 * 21; ++i)
        points +=
            std::to_string(-1.5 + 0.15 * (i % 21)) + " " + std::to_string(-1.5 + 0.15 * (i / 21)) + " 0, ";
    return points;
}

/// All markers of the toolkit and two more: where they stand, in the middle of pixels, and their indices. And
/// the indices of more kinds than a page could ever show.
void nameMarkers(std::map<std::string, std::string> &named) {
    constexpr int OWN = 1000, KINDS = 1100;
    const unsigned char arrow[] = {0x10, 0x30, 0x7f, 0xff, 0x7f, 0x30, 0x10},
                        stripes[] = {0xaa, 0xa8, 0x55, 0x50};
    if (SoMarkerSet::getNumDefinedMarkers() <= OWN) { // to replace them, the toolkit mixes new and delete
        SoMarkerSet::addMarker(OWN, SbVec2s(8, 7), arrow, FALSE, FALSE);
        SoMarkerSet::addMarker(OWN + 1, SbVec2s(13, 2), stripes, FALSE, TRUE);
        for (int i = OWN + 2; i < OWN + KINDS; ++i)
            SoMarkerSet::addMarker(i, SbVec2s(1 + i % 8, 1 + i % 7), arrow);
    }
    for (int i = OWN; i < OWN + KINDS; ++i)
        named["$KINDS"] += std::to_string(i) + ", ";
    for (int i = 0; i < SoMarkerSet::NUM_MARKERS + 2; ++i) {
        const int own = i - SoMarkerSet::NUM_MARKERS;
        named["$MARKERS"] += std::to_string(own < 0 ? i : OWN + own) + ", ";
        named["$MARKED"] +=
            std::to_string(-1.61 + 0.36 * (i % 10)) + " " + std::to_string(-1.81 + 0.36 * (i / 10)) + " 0, ";
    }
}

/// The row that a line "== name options" begins.
Row headOf(std::istringstream &words) {
    Row row;
    words >> row.name;
    for (std::string word; words >> word;) {
        row.isPixels |= word == "pixels";
        row.isFull |= word == "full";
        row.isBad |= word == "bad";
        row.differing = std::isdigit(word[0]) ? std::stod(word) : row.differing;
    }
    return row;
}

/// The rows of data/scenes.txt, where their form is told.
std::vector<Row> readRows(bool bad) {
    std::vector<Row> rows;
    std::map<std::string, std::string> named{{"$POINTS", plate()}};
    nameMarkers(named);
    const auto rest = [&](std::istringstream &words) {
        std::string text;
        for (std::string word; words >> word;)
            text += (word[0] == '$' ? named.at(word) : word) + " ";
        return text;
    };
    std::istringstream file(readFile(ORAVANE_SOURCE_DIR "/tests/tools/data/scenes.txt"));
    std::string *nodes = nullptr;
    for (std::string line, word; std::getline(file, line);) {
        std::istringstream words(line);
        if (!(words >> word) || word == "#")
            continue;
        if (word == "==") {
            nodes = &rows.emplace_back(headOf(words)).nodes;
        } else if (word == "--") {
            nodes = &rows.back().rendered;
        } else if (word[0] == '$' && !named.contains(word)) {
            named[word] = rest(words);
        } else {
            words = std::istringstream(line);
            *nodes += rest(words);
        }
    }
    std::erase_if(rows, [&](const Row &row) { return row.isBad != bad; });
    return rows;
}

TEST(ScenePage, LooksAsTheRendering) {
    expectAlike(readRows(false));
}

/// Puts `value` where the field has the number 3e38.
void spoil(SoField *field, float value) {
    const auto replace = [&](float *numbers, int n) { std::replace(numbers, numbers + n, 3e38f, value); };
    const auto replaceAll = [&](auto *vectors) {
        replace(&(*vectors->startEditing())[0], 3 * vectors->getNum());
        vectors->finishEditing();
    };
    if (auto *number = dynamic_cast<SoSFFloat *>(field)) {
        number->setValue(number->getValue() == 3e38f ? value : number->getValue());
    } else if (auto *vector = dynamic_cast<SoSFVec3f *>(field)) {
        SbVec3f v = vector->getValue();
        replace(&v[0], 3);
        vector->setValue(v);
    } else if (auto *matrix = dynamic_cast<SoSFMatrix *>(field)) {
        SbMatrix m = matrix->getValue();
        replace(m[0], 16);
        matrix->setValue(m);
    } else if (auto *vectors = dynamic_cast<SoMFVec3f *>(field)) {
        replaceAll(vectors);
    } else if (auto *colors = dynamic_cast<SoMFColor *>(field)) {
        replaceAll(colors);
    }
}

void spoil(SoNode *scene, float value) {
    SoSearchAction all;
    all.setInterest(SoSearchAction::ALL);
    all.setType(SoNode::getClassTypeId());
    all.apply(scene);
    for (int i = 0; i < all.getPaths().getLength(); ++i) {
        SoFieldList fields;
        all.getPaths()[i]->getTail()->getFields(fields);
        for (int k = 0; k < fields.getLength(); ++k)
            spoil(fields[k], value);
    }
}

/// The pages of a scene in all modes.
std::string pagesOf(const Row &row) {
    std::string pages;
    for (const float value : {3e38f, HUGE_VALF, std::nanf("")}) {
        const Scene scene("Separator { " + row.nodes + " }");
        spoil(scene, value);
        for (const auto mode : {SoVectorizeAction::HLHSR_NONE, SoVectorizeAction::HLHSR_Z_SORT,
                                SoVectorizeAction::HLHSR_FULL_SORT, SoVectorizeAction::HLHSR_LINE_REMOVAL})
            pages += pageOf(mode, scene);
        pages += pageOf(SoVectorizeAction::HLHSR_Z_SORT, scene, 0);
        pages += pageOf(SoVectorizeAction::HLHSR_NONE, scene, 1e30f);
        if (row.nodes.find("3e38") == std::string::npos)
            break;
    }
    return pages;
}

TEST(ScenePage, IsGoodForAnyScene) {
    std::string all;
    const std::vector<Row> rows = readRows(true);
    for (const Row &row : rows) {
        const std::string pages = pagesOf(row);
        for (const char *word : {" nan", " inf", "-nan", "-inf"})
            EXPECT_EQ(count(pages, word), 0) << row.name;
        all += pages;
    }
    if (complaints(all).empty())
        return;
    for (const Row &row : rows)
        EXPECT_EQ(complaints(pagesOf(row)), "") << row.name;
    ADD_FAILURE() << "Ghostscript complains";
}

} // namespace
