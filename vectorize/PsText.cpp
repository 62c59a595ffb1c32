#include "vectorize/PsText.h"

#include "vectorize/PageFormat.h"
#include "vectorize/PageText.h"

#include <algorithm>

namespace oravane {

namespace {

// Pages are compared byte by byte, blanks at the ends of lines included. "@" stands for the operator that
// sets the colour.
constexpr std::string_view kDrawing =
    "/ep { /epaisseur exch def } bind def\n"
    "/ps { /pointsize exch def } bind def\n"
    "/tl { /patstart exch def /styleligne exch def } bind def\n"
    "% Xn Yn ..... X1 Y1 N colour width style  ppl\n"
    "/ppl\n"
    "{ /m exch def\n"
    "  @\n"
    "  epaisseur setlinewidth\n"
    "  styleligne patstart setdash\n"
    "  newpath\n"
    "  moveto\n"
    "  m 1 sub {lineto} repeat\n"
    "  stroke\n"
    "  closepath\n"
    "} bind def\n"
    "%pfa et pfas decomp pour niv1\n"
    "/pfabeg { \n"
    " [] 0 setdash\n"
    " epaisseur setlinewidth\n"
    " @\n"
    " newpath moveto \n"
    "} bind def\n"
    "/pfacnt { /m exch def m {lineto} repeat } bind def\n"
    "/pfaend { /m exch def m {lineto} repeat closepath } bind def\n"
    "% istyle pfa\n"
    "/pfa { /istyle exch def 1 istyle eq {eofill} {stroke} ifelse } bind def\n"
    "% Xn Yn ..... X1 Y1 N colour ppmp\n"
    "/ppmp\n"
    "{ @\n"
    "  pointsize setlinewidth\n"
    "  [] 0 setdash\n"
    "  0 setlinecap\n"
    "  { newpath\n"
    "    moveto pointsize -2 div 0 rmoveto\n"
    "    pointsize 0 rlineto\n"
    "    stroke\n"
    "    closepath\n"
    "  } repeat\n"
    "  linecap setlinecap\n"
    "} bind def\n"
    "% left text\n"
    "/ltx \n"
    "{ @\n"
    "  gsave\n"
    "  translate rotate\n"
    "  0.0 0.0 moveto show\n"
    "  grestore\n"
    "} bind def\n"
    "% right text\n"
    "/rtx \n"
    "{ @\n"
    "  gsave\n"
    "  /str exch def\n"
    "  /angle exch def\n"
    "  translate\n"
    "  str stringwidth pop neg\n"
    "  /wx exch def\n"
    "  wx angle cos mul\n"
    "  wx angle sin mul\n"
    "  moveto angle rotate str show\n"
    "  grestore\n"
    "} bind def\n"
    "% center text\n"
    "/ctx \n"
    "{ @\n"
    "  gsave\n"
    "  /str exch def\n"
    "  /angle exch def\n"
    "  translate\n"
    "  str stringwidth pop 2 div neg\n"
    "  /wxdiv2 exch def  wxdiv2 angle cos mul\n"
    "  wxdiv2 angle sin mul\n"
    "  moveto angle rotate str show\n"
    "  grestore\n"
    "} bind def\n";

constexpr std::string_view kDisplayBitmap = "/DisplayBitmap\n"
                                            "{ @\n"
                                            "  gsave\n"
                                            "  translate scale\n"
                                            "  currentBitmapIndex\n"
                                            "  grestore\n"
                                            "} bind def\n";

constexpr std::string_view kDisplayColorImage =
    "/DisplayImage\n"
    "{ gsave\n"
    "  /numComponents exch def\n"
    "  /lenline exch def /line lenline string def\n"
    "  translate scale\n"
    "  /columns exch def /rows exch def\n"
    "  newpath 0 0 moveto rows columns 8  [rows 0 0 columns 0 0]\n"
    "  { currentfile line readhexstring pop } false numComponents colorimage\n"
    "  grestore\n"
    "} bind def\n";

constexpr std::string_view kDisplayGreyImage = "/DisplayImage\n"
                                               "{ gsave\n"
                                               "  /lenline exch def /line lenline string def\n"
                                               "  translate scale\n"
                                               "  /columns exch def /rows exch def\n"
                                               "  newpath 0 0 moveto rows columns 8  [rows 0 0 columns 0 0]\n"
                                               "  { currentfile line readhexstring pop } image\n"
                                               "  grestore\n"
                                               "} bind def\n";

void addWithColor(std::string &text, std::string_view procedures, std::string_view colorOperator) {
    for (const char c : procedures) {
        if (c == '@')
            text += colorOperator;
        else
            text += c;
    }
}

void addPadded(std::string &text, int value) {
    const std::string digits = std::to_string(value);
    text.append(digits.size() < 4 ? 4 - digits.size() : 0, ' ');
    text += digits;
}

} // namespace

std::string psProlog(bool colored, int pageWidth, int pageHeight) {
    std::string text = "%!PS-Adobe-2.0\n"
                       "%%Creator: Oravane 3.5\n"
                       "%%Title: Tessaric\n"
                       "%%BoundingBox: 0 0 ";
    addPadded(text, pageWidth);
    text += ' ';
    addPadded(text, pageHeight);
    text += "\n%%EndComments\n";
    text += colored ? "% color header\n%\n" : "% black & white header\n%\n";
    text += colored ? "/gc { /colorgblue exch def /colorggreen exch def /colorgred exch def } bind def\n"
                    : "/gb { /colorg exch def } bind def\n";
    const std::string_view setColor =
        colored ? "colorgred colorggreen colorgblue setrgbcolor" : "colorg setgray";
    addWithColor(text, kDrawing, setColor);
    if (colored)
        text += "% Display the current bitmap (scaleX scaleY x y DisplayBitmap)\n";
    addWithColor(text, kDisplayBitmap, setColor);
    text += colored ? kDisplayColorImage : kDisplayGreyImage;
    text += "% end\n";
    return text;
}

namespace {

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

} // namespace

std::string psString(std::string_view text) {
    std::string result;
    bool afterBackslash = false; // an odd number of backslashes stands directly before
    const auto startEscape = [&] {
        if (afterBackslash)
            result += '\\';
        result += '\\';
    };
    for (const char c : text) {
        if (isControl(c)) {
            startEscape();
            const auto byte = static_cast<unsigned char>(c);
            for (const int shift : {6, 3, 0})
                result += static_cast<char>('0' + (byte >> shift & 7));
        } else {
            if (c == '(' || c == ')')
                startEscape();
            result += c;
        }
        afterBackslash = c == '\\' && !afterBackslash;
    }
    if (afterBackslash)
        result += '\\';
    return result;
}

std::string psFontName(std::string_view name) {
    const bool isPlain = std::ranges::none_of(name, [](char c) {
        return isControl(c) || static_cast<unsigned char>(c) >= 0x80 ||
               std::string_view(" ()<>[]{}/%").find(c) != std::string_view::npos;
    });
    std::string result = isPlain ? "/" : "(";
    result += isPlain ? std::string(name) : psString(name);
    result += isPlain ? "" : ") cvn";
    return result;
}

PsDash psDash(unsigned short pattern) {
    constexpr int kBits = 16;
    constexpr double kBitLength = 0.35;
    PsDash dash;
    if (pattern == 0 || pattern == kSolidPattern)
        return dash;
    const PatternRuns runs = patternRuns(pattern);
    PageText text;
    for (int i = 0; i < runs.count; ++i)
        text.fixed2(runs.lengths[i] * kBitLength) << " ";
    if (runs.count % 2 == 1)
        text << "0. "; // on and off pair up
    dash.elements = text.view();
    dash.offsetBits = kBits - runs.shifts;
    return dash;
}

} // namespace oravane
