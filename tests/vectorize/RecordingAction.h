#ifndef ORAVANE_TESTS_RECORDINGACTION_H
#define ORAVANE_TESTS_RECORDINGACTION_H

#include <oravane/SoVectorOutput.h>
#include <oravane/SoVectorizeAction.h>

#include <string>
#include <vector>

namespace oravane_test {

/// A driver that keeps what it is told.
class RecordingAction : public SoVectorizeAction {
public:
    struct Drawn {
        std::string kind;
        std::vector<SbVec4f> points;
        std::vector<SbColor> colors;
        int multicolor = 0;
        float size = 0;
        unsigned short pattern = 0;
        std::string text;
        int justification = 0;
    };

    RecordingAction() { setDrawingDimensions(100, 100, MILLIMETER); }
    ~RecordingAction() override { closePage(); }

    std::vector<Drawn> drawn;
    std::string frame; ///< H header, F footer, G background, B border, C clip

    int count(const std::string &kind) const {
        int n = 0;
        for (const Drawn &d : drawn)
            n += d.kind == kind;
        return n;
    }
    std::string kinds() const {
        std::string all;
        for (const Drawn &d : drawn)
            all += d.kind + " ";
        return all;
    }
    void forget() {
        drawn.clear();
        frame.clear();
    }

    using SoVectorizeAction::getClippingLimits;
    using SoVectorizeAction::getOffsetX;
    using SoVectorizeAction::penAssignment;
    using SoVectorizeAction::translateColor;

protected:
    void writeHeader() override { frame += "H"; }
    void writeFooter() override { frame += "F"; }
    void setHardwareClip() override { frame += "C"; }
    void printBorder() override { frame += "B"; }
    void printBackground() override { frame += "G"; }

    Drawn &add(const char *kind, const SbVec4f *points, int n, const SbColor *colors, int multicolor,
               float size) {
        drawn.push_back({kind, {points, points + n}, {}, multicolor, size, 0, "", 0});
        if (colors)
            drawn.back().colors.assign(colors, colors + n);
        return drawn.back();
    }
    void printPolygon(const SbVec4f *points, int n, const SbColor *colors) override {
        add("polygon", points, n, colors, 0, 0);
    }
    void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern) override {
        add("line", points, n, colors, multicolor, width).pattern = pattern;
    }
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       float size) override {
        add("marks", points, n, colors, multicolor, size);
    }
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       SoMarkerSet *) override {
        add("markers", points, n, colors, multicolor, 0);
    }
    void printText2(SbVec4f point, SbColor color, const char *, float size, const char *string,
                    int justification, float) override {
        Drawn &d = add("text", &point, 1, &color, 0, size);
        d.text = string;
        d.justification = justification;
    }
    void printImage(const SbVec4f &point, const unsigned char *, SbVec2s &size, SbVec2s &sourceSize,
                    int components, SoImage::HorAlignment, SoImage::VertAlignment) override {
        Drawn &d = add("image", &point, 1, nullptr, 0, size[0]);
        d.text = std::to_string(sourceSize[0]) + "x" + std::to_string(sourceSize[1]) + "x" +
                 std::to_string(components);
    }
};

} // namespace oravane_test

#endif
