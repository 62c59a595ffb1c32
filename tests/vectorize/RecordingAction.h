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
        float angle = 0;
    };

    RecordingAction() { setDrawingDimensions(100, 100, MILLIMETER); }
    ~RecordingAction() override { closePage(); }

    std::vector<Drawn> drawn;
    std::string frame; ///< H header, F footer, G background, B border, C clip

    /// What was drawn, with the numbers of points: "polygon3 line2 ".
    std::string kinds() const {
        std::string all;
        for (const Drawn &d : drawn)
            all += d.kind + std::to_string(d.points.size()) + " ";
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

    using Points = const SbVec4f *;
    using Colors = const SbColor *;

    Drawn &add(const char *kind, Points points, int n, Colors colors, int multicolor, float size) {
        drawn.push_back({kind, {points, points + n}, {}, multicolor, size, 0, "", 0, 0});
        if (colors)
            drawn.back().colors.assign(colors, colors + n);
        return drawn.back();
    }
    void printPolygon(Points p, int n, Colors c) override { add("polygon", p, n, c, 0, 0); }
    void printPolyLine(Points p, int n, Colors c, int multi, float width, unsigned short pattern) override {
        add("line", p, n, c, multi, width).pattern = pattern;
    }
    void printPolyMark(Points p, int n, Colors c, int multi, float size) override {
        add("marks", p, n, c, multi, size);
    }
    void printPolyMark(Points p, int n, Colors c, int multi, SoMarkerSet *) override {
        add("markers", p, n, c, multi, 0);
    }
    void printText2(SbVec4f point, SbColor color, const char *, float size, const char *string,
                    int justification, float angle) override {
        Drawn &d = add("text", &point, 1, &color, 0, size);
        d.text = string;
        d.justification = justification;
        d.angle = angle;
    }
    void printImage(const SbVec4f &point, const unsigned char *, SbVec2s &size, SbVec2s &source,
                    int components, SoImage::HorAlignment, SoImage::VertAlignment) override {
        const auto product = [](const SbVec2s &v) {
            return std::to_string(v[0]) + "x" + std::to_string(v[1]);
        };
        add("image", &point, 1, nullptr, 0, 0).text =
            product(source) + "x" + std::to_string(components) + " as " + product(size);
    }
};

} // namespace oravane_test

#endif
