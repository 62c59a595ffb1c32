#include "TemporaryFolder.h"
#include "tools/Picture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <regex>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const std::string kScenes = ORAVANE_SOURCE_DIR "/tests/tools/scenes/";
const std::string kHeader = "#Inventor V2.1 ascii\n";
const std::string kCube = kHeader + "Cube { }\n";

std::string contentOf(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The program in a folder of its own.
class OravaneProgram : public ::testing::Test {
protected:
    /// The exit status.
    int run(const std::string &arguments) {
        const std::string command = "cd '" + folder.path("") +
                                    "' && COIN_FORCE_FREETYPE_OFF=1 " ORAVANE_PROGRAM " " + arguments +
                                    " > .out 2> .err";
        const int status = std::system(command.c_str());
        out = contentOf(folder.path(".out"));
        err = contentOf(folder.path(".err"));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string page(const std::string &options) {
        EXPECT_EQ(run("page -q " + options + " -o page.ps"), 0) << options;
        EXPECT_EQ(err, "") << options;
        return contentOf(folder.path("page.ps"));
    }

    /// The PostScript page as a picture of `width` pixels.
    oravane::Picture rasterOf(const std::string &name, double dotsPerInch) {
        const std::string command = "cd '" + folder.path("") +
                                    "' && gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m "
                                    "-dDownScaleFactor=4 -r" +
                                    std::to_string(4 * dotsPerInch) + " -o raster.png " + name +
                                    " > gs.log 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0);
        EXPECT_EQ(contentOf(folder.path("gs.log")), "") << name;
        return oravane::readPng(folder.path("raster.png"));
    }

    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto &entry : fs::recursive_directory_iterator(folder.path("")))
            if (const std::string name = entry.path().filename().string();
                entry.is_regular_file() && name[0] != '.')
                names.insert(name);
        return names;
    }

    TemporaryFolder folder;
    std::string out, err;
};

/// The mean difference of two pictures, 0 to 255.
double difference(const oravane::Picture &a, const oravane::Picture &b) {
    double sum = 0;
    for (int y = 0; y < std::min(a.height, b.height); ++y)
        for (int x = 0; x < std::min(a.width, b.width); ++x)
            for (int c = 0; c < 3; ++c)
                sum += std::abs(a.at(x, y)[c] - b.at(x, y)[c]);
    return sum / (3.0 * a.width * a.height);
}

TEST_F(OravaneProgram, APageShowsWhatThePictureShows) {
    const struct {
        const char *scene, *sheet;
        int width, height; // of the picture, at 2 pixels a millimetre
    } rows[] = {{"solids", "200x120", 400, 240},
                {"solids", "120x200", 240, 400},
                {"framed", "100x150", 200, 300},
                {"pie", "150x150", 300, 300}};
    for (const auto &row : rows) {
        const std::string scene = kScenes + row.scene + ".iv",
                          size = std::to_string(row.width) + "x" + std::to_string(row.height);
        page(scene + " --lighting --margin 0 --line-width 0.5 --background '#ccd' --size " + row.sheet);
        ASSERT_EQ(run("picture -q " + scene + " -o picture.png --background '#ccd' --size " + size), 0)
            << err;
        const oravane::Picture drawn = rasterOf("page.ps", 50.8),
                               seen = oravane::readPng(folder.path("picture.png"));
        EXPECT_NEAR(drawn.width, row.width, 1) << "the sheet has the size that was asked for";
        EXPECT_NEAR(drawn.height, row.height, 1);
        ASSERT_EQ(std::pair(seen.width, seen.height), std::pair(row.width, row.height));
        EXPECT_LT(difference(drawn, seen), 3) << row.scene << " " << row.sheet;
        oravane::Picture empty = seen;
        for (std::size_t i = 0; i < empty.rgb.size(); ++i)
            empty.rgb[i] = i % 3 == 2 ? 0xDD : 0xCC;
        EXPECT_GT(difference(empty, seen), 3 * difference(drawn, seen)) << "there is something to be seen";
    }
}

TEST_F(OravaneProgram, ACameraThatIsAddedSeesTextsOfFixedSize) {
    folder.write("a.iv", kHeader + "Coordinate3 { point [ 0 0 0, 1 0 0 ] } LineSet { } Translation { "
                                   "translation 0 3 0 } Text2 { string \"HHH\" }");
    ASSERT_EQ(run("picture -q a.iv --size 99x99 --antialias 1"), 0);
    const auto picture = oravane::readPng(folder.path("a.png"));
    EXPECT_LT(*std::min_element(picture.rgb.begin(), picture.rgb.begin() + 3 * 99 * 30), 255);
}

TEST_F(OravaneProgram, OptionsReachThePage) {
    folder.write("line.iv", kHeader +
                                "LightModel { model BASE_COLOR } BaseColor { rgb 0 0 1 } Coordinate3 { point "
                                "[ 0 0 0, 1 1 0 ] } LineSet { } BaseColor { rgb 1 1 1 } LineSet { }");
    const std::string plain = page("line.iv");
    const struct {
        const char *options, *text; // which the plain page lacks
    } rows[] = {
        {"--size letter", "/PageSize [ 612 792 ]"},
        {"--landscape", "/PageSize [ 842 595 ]"},
        {"--landscape --size 300x100", "/PageSize [ 850 283 ]"},
        {"--margin 20", "20.00 20.00 translate"},
        {"--border 3", "1.06 ep\n"},
        {"--background '#ff8000'", "1 0.5 0 gc"},
        {"--colors swap", "0 0 0 gc"},
        {"--colors complement", "1 1 0 gc"},
        {"--line-width 0.7", "0.70 ps"},
        {"--line-ends round", "/linecap 1 def"},
        {"--line-joins round", "1 setlinejoin"},
        {"--pens red:0.5", "1 0 0 gc"},
        {"--pens blue:2,red --pens-by width", "1 0 0 gc"},
        {"--grey", "% black & white header"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(plain.find(row.text), std::string::npos) << row.options;
        EXPECT_NE(page(std::string(row.options) + " line.iv").find(row.text), std::string::npos)
            << row.options;
    }
    EXPECT_EQ(run("page -q line.iv --landscape -o page.eps"), 0);
    const std::string encapsulated = contentOf(folder.path("page.eps"));
    EXPECT_NE(encapsulated.find("%%BoundingBox: 0 0  841  595"), std::string::npos);
    EXPECT_EQ(encapsulated.find("setpagedevice"), std::string::npos) << "it may stand inside of another page";
    EXPECT_NE(page("--hidden-lines none " + kScenes + "solids.iv"), page(kScenes + "solids.iv"));
}

TEST_F(OravaneProgram, TheNameOrTheOptionChoosesTheFormat) {
    folder.write("a.iv", kCube);
    const struct {
        const char *options, *file, *start, *text;
    } rows[] = {
        {"-o a.ps", "a.ps", "%!PS", "showpage"},
        {"-o a.cgm", "a.cgm", "BEGMF", "VDCEXT 0. 0. 210. 297.;"},
        {"-o a.cgm --colors swap", "a.cgm", "BEGMF", "BACKCOLR 255 255 255;"},
        {"-o a.cgm --background red", "a.cgm", "BEGMF", "BACKCOLR 255 0 0;"},
        {"--format cgm --cgm-version 3 --cgm-version 1 --indexed", "a.cgm", "BEGMF", "COLRMODE INDEXED;"},
        {"--format cgm --cgm-version 3 --landscape", "a.cgm", "BEGMF", "VDCEXT 0. 0. 297. 210.;"},
        {"-o a.ps --format cgm --binary", "a.ps", "", "Binary Image from PLOT"},
        {"-o a.PLT", "a.PLT", "\x1b%-1B", "PS8400,11880;"},
        {"-o a.hpg --landscape", "a.hpg", "\x1b%-1B\nIN;RO90;", "PS8400,11880;"},
        {"--format hpgl --size 100x50 --pens black,red", "a.hpgl", "\x1b%-1B", "NP2;"},
    };
    for (const auto &row : rows) {
        ASSERT_EQ(run(std::string("page -q a.iv ") + row.options), 0) << err;
        const std::string page = contentOf(folder.path(row.file));
        EXPECT_TRUE(page.starts_with(row.start)) << row.options;
        EXPECT_NE(page.find(row.text), std::string::npos) << row.options << row.text;
    }
}

TEST_F(OravaneProgram, SaysInOneLineWhatIsWrongWithAScene) {
    const std::string random("\x01\xF3\x00\x7F{}", 6);
    const struct {
        const char *name;
        std::string content;
        int status;
        std::string message;
    } rows[] = {
        {"class.iv", kHeader + "Separator {\n  Foo { a 1 }\n}\n", 1, "class.iv:3: Unknown class \"Foo\""},
        {"number.iv", kHeader + "Coordinate3 { point [ 1e60 0 0, nan ] }\n", 1,
         "number.iv:2: Couldn't read value for field \"point\" of Coordinate3"},
        {"large.iv", kHeader + "Translation { translation 3e38 0 0 } Cube { width 3e38 }\n", 0,
         "warning: large.iv: the scene is too large for a camera"},
        {"empty.iv", "", 1, "empty.iv: the file is empty"},
        {"text.iv", "hello\n", 1, "text.iv: not an Inventor or VRML file"},
        {"half.iv", "#Inventor V2.1 binary\n" + random, 1, "half.iv: String too long"},
        {"nothing.iv", kHeader, 0, "warning: nothing.iv: nothing is in the scene"},
        {"sub.iv", kCube + "File { name \"absent.iv\" }\n", 0,
         "warning: sub.iv:3: Could not find 'absent.iv'"},
        {"more.iv", kCube + "}\n", 0,
         "warning: more.iv:3: Erroneous character(s) after end of scenegraph: \"}\""},
        {"image.iv", kHeader + "Texture2 { filename \"a.png\" } Cube { }\n", 0,
         "warning: image.iv:2: Could not read texture file 'a.png'"},
        {"vrml2.wrl", "#VRML V2.0 utf8\nShape { geometry Box { } }\n", 0, ""},
    };
    for (const auto &row : rows) {
        folder.write(row.name, row.content);
        EXPECT_EQ(run("page -q -o page.ps " + std::string(row.name)), row.status) << row.name;
        EXPECT_TRUE(err.starts_with(row.message.empty() ? "" : "oravane: " + row.message)) << err;
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), row.message.empty() ? 0 : 1) << err;
        EXPECT_EQ(fs::remove(folder.path("page.ps")), row.status == 0) << row.name;
    }
    EXPECT_EQ(run("page -q more.iv picture"), 1);
    EXPECT_TRUE(err.ends_with("oravane: picture: No such file or directory\n"))
        << "no second command: " << err;
    EXPECT_EQ(run("picture -q ."), 1);
    EXPECT_EQ(err, "oravane: .: is a folder\n");
    folder.write("packed.iv", kCube);
    ASSERT_EQ(std::system(("gzip '" + folder.path("packed.iv") + "'").c_str()), 0);
    EXPECT_EQ(run("page packed.iv.gz"), 0);
    EXPECT_EQ(err, "[1/1] packed.iv.gz -> packed.ps\n");
}

TEST_F(OravaneProgram, SeveralScenesBecomeSeveralFiles) {
    folder.write("a.iv", kCube);
    folder.write("b.iv", "hello");
    folder.write("c.wrl", "#VRML V1.0 ascii\nCube { }\n");
    EXPECT_EQ(run("page a.iv b.iv c.wrl -o new/pages"), 1);
    EXPECT_EQ(err, "[1/3] a.iv -> new/pages/a.ps\n[2/3] b.iv -> new/pages/b.ps\n"
                   "oravane: b.iv: not an Inventor or VRML file\n[3/3] c.wrl -> new/pages/c.ps\n");
    EXPECT_EQ(files(), (std::set<std::string>{"a.iv", "a.ps", "b.iv", "c.ps", "c.wrl"}));
    EXPECT_EQ(out, "");
    EXPECT_EQ(run("picture -q a.iv c.wrl --size 20x10"), 0);
    EXPECT_EQ(err, "");
    EXPECT_EQ(oravane::readPng(folder.path("c.png")).width, 20);
    EXPECT_EQ(run("page -q a.iv -o -"), 0);
    EXPECT_EQ(out, contentOf(folder.path("new/pages/a.ps")));
}

TEST_F(OravaneProgram, AnOutputIsWrittenWholeOrNotAtAll) {
    const std::string before = folder.write("a.ps", "before");
    folder.write("a.iv", kCube);
    const struct {
        const char *output, *reason;
    } rows[] = {{"absent/a.ps", "cannot write absent/a.ps: No such file or directory"},
                {"a.iv/a.ps", "cannot write a.iv/a.ps: Not a directory"},
                {"/dev/full", "cannot write /dev/full: No space left on device"},
                {"a.iv/", "cannot make the folder a.iv/: File exists"}};
    for (const auto &row : rows) {
        EXPECT_EQ(run(std::string("page -q a.iv --format ps -o ") + row.output), 1);
        EXPECT_EQ(err, "oravane: " + std::string(row.reason) + "\n");
    }
    const std::string longest = std::string(252, 'k') + ".ps";
    EXPECT_EQ(run("page -q a.iv -o " + longest), 0);
    EXPECT_TRUE(fs::remove(folder.path(longest)));
    if (geteuid() != 0) { // whom no permission stops
        fs::permissions(before, fs::perms::owner_read);
        EXPECT_EQ(run("page -q a.iv"), 1);
        EXPECT_EQ(err, "oravane: cannot write a.ps: Permission denied\n");
        EXPECT_EQ(contentOf(before), "before");
    }
    fs::permissions(before, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(before, folder.path("link.ps"));
    EXPECT_EQ(run("page -q a.iv -o link.ps"), 0);
    EXPECT_TRUE(contentOf(before).starts_with("%!PS")) << "the link stays, and leads to the new page";
    EXPECT_TRUE(fs::is_symlink(folder.path("link.ps")));
    EXPECT_EQ(fs::status(before).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files(), (std::set<std::string>{"a.iv", "a.ps", "link.ps"})) << "nothing is left over";
}

TEST_F(OravaneProgram, RefusesAWrongCommandLineBeforeAnythingIsWritten) {
    folder.write("a.iv", kCube);
    fs::create_directory(folder.path("d"));
    fs::copy(folder.path("a.iv"), folder.path("d/a.iv"));
    const struct {
        const char *arguments, *message;
    } rows[] = {
        {"paint a.iv", "there is no command paint, but page and picture"},
        {"--quiet", "The following argument was not expected: --quiet"},
        {"page", "the file of a scene is needed"},
        {"page ''", "the file of a scene is needed"},
        {"page a.iv --nothing", "The following argument was not expected: --nothing"},
        {"page a.iv -o a.doc",
         "the name a.doc does not say which language the page is to have: give --format ps, cgm, hpgl"},
        {"page a.iv --format doc", "--format: \"doc\" is none of ps|cgm|hpgl"},
        {"page a.iv --binary", "--binary is for pages in CGM, and this is PostScript"},
        {"page a.iv --margin 105", "--margin leaves nothing of the paper"},
        {"page a.iv --hidden-lines all", "--hidden-lines: \"all\" is none of none|sort|full|lines"},
        {"page a.iv --pens-by width", "--pens-by requires --pens"},
        {"page a.iv d/a.iv", "a.iv and d/a.iv would both become a.ps"},
        {"page a.iv d/a.iv -o all.ps", "several scenes need a folder for their files, and all.ps is none"},
        {"page a.iv d/a.iv -o a.iv", "several scenes need a folder for their files, and a.iv is none"},
        {"page a.iv d/a.iv -o -", "several scenes need a folder for their files, and - is none"},
        {"page a.iv --format ps -o d/../a.iv", "d/../a.iv is an input, and would be overwritten"},
        {"picture a.iv -o a.jpg", "pictures are PNG files: let the name a.jpg end with .png"},
        {"picture a.iv --size 9000x10", "--size: with --antialias 4 a side has at most 8191 pixels"},
        {"picture a.iv --antialias 2.5", "--antialias: \"2.5\" is no whole number from 1 to 8"},
        {"page a.iv --line-width 0", "--line-width: \"0\" is no number from 0.001 to 1000"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(run(row.arguments), 2) << row.arguments;
        EXPECT_TRUE(err.starts_with("oravane: " + std::string(row.message))) << row.arguments << ": " << err;
        EXPECT_NE(err.find("--help\".\n"), std::string::npos) << err;
    }
    EXPECT_EQ(run(""), 2);
    EXPECT_EQ(files(), (std::set<std::string>{"a.iv"}));
}

/// The long options that `text` names after `before`.
std::set<std::string> optionsIn(const std::string &text, const std::string &before) {
    const std::regex pattern(before + "--([a-z-]+)");
    std::set<std::string> names;
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
        names.insert((*at)[1]);
    return names;
}

TEST_F(OravaneProgram, HelpAndManualNameTheSameOptions) {
    std::string manual = std::regex_replace(contentOf(ORAVANE_SOURCE_DIR "/tools/oravane/oravane.1"),
                                            std::regex("\\\\-"), "-");
    std::set<std::string> helped;
    for (const char *command : {"", "page ", "picture "}) {
        ASSERT_EQ(run(std::string(command) + "--help"), 0);
        helped.merge(optionsIn(out, "\n (?: -., |     )"));
    }
    EXPECT_GE(helped.size(), 23U);
    EXPECT_EQ(optionsIn(manual, "\n\\.B[^\n]*?"), helped);
    EXPECT_EQ(run("--version"), 0);
    out.pop_back(); // the line end
    EXPECT_NE(manual.find('"' + out + '"'), std::string::npos) << out;
}

} // namespace
