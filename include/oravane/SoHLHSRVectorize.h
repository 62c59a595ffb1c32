#ifndef ORAVANE_SOHLHSRVECTORIZE_H
#define ORAVANE_SOHLHSRVECTORIZE_H

#include <oravane/PrimitiveList.h>

#include <memory>

ORAVANE_VECTORIZE_BEGIN

class SoHiddenLines;
class SoVectorizeAction;

/// Collects the primitives of one view, and draws them from far to near when the view is complete. Page
/// formats have no depth buffer; what is drawn later covers what was drawn before.
///
/// \code
///   SoHLHSRVectorize hlhsr(action, SoHLHSRVectorize::Z_SORT);
///   hlhsr.startHLHSR();
///   hlhsr.storePolygon(points, 3, colors, 0, 1, 1, 0xFFFF, PolyGon::FILLED);
///   hlhsr.endHLHSR();    // calls action's print operations
/// \endcode
///
/// Stored points are normalised (see `Primitive`), and copied; the primitives of a batch share one block of
/// memory that is freed with the batch. A primitive with a point that is not finite is not stored, nor is one
/// without points. Without a batch open nothing is stored.
class ORAVANE_API SoHLHSRVectorize {
public:
    enum HLHSRMode : int {
        Z_SORT = 0,    ///< by the largest z of each primitive
        FULL_SORT = 1, ///< then overlapping polygons are exchanged where their planes tell
        /// The visible lines alone: those of polygons, in the colour of their first point, and polylines, see
        /// `SoHiddenLines`. They are drawn last; all else is sorted as by Z_SORT, and nothing hides it.
        LINE_REMOVAL = 2,
    };

    /// `action` is borrowed.
    SoHLHSRVectorize(SoVectorizeAction *action, HLHSRMode mode);
    SoHLHSRVectorize(const SoHLHSRVectorize &) = delete;
    SoHLHSRVectorize &operator=(const SoHLHSRVectorize &) = delete;
    ~SoHLHSRVectorize();

    /// Opens an empty batch; what an open batch holds is dropped.
    void startHLHSR();
    /// Sorts and draws the batch, if one is open, and closes it.
    void endHLHSR();

    void storePolygon(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                      float size, unsigned short pattern, PolyGon::Style style);
    void storePolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern);
    void storePolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float size,
                       SoMarkerSet *markerSet);
    void storeImage(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                    const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                    SoImage::VertAlignment vertical);
    void storeText2D(const SbVec4f &point, const SbColor &color, const char *fontName, float size,
                     int numStrings, const SbString *strings, float spacing, int justification, float angle);

    /// Each projects its points to the page and calls the action's print operation. `printText2D` prints each
    /// string on a line of its own, below the one before.
    void printPolygon(const SbVec4f *points, int n, const SbColor *colors);
    void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern);
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float size,
                       SoMarkerSet *markerSet);
    void printImage(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                    const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                    SoImage::VertAlignment vertical);
    void printText2D(const SbVec4f &point, const SbColor &color, const char *fontName, float size,
                     int numStrings, const SbString *strings, float spacing, int justification, float angle);

private:
    struct Batch;

    template <class P, class... Values>
    void store(const SbVec4f *points, int n, const Values &...values);
    void storeRuns(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                   unsigned short pattern);
    void printVisibleLines(SoHiddenLines &lines);
    const SbVec4f *project(const SbVec4f *points, int n);

    SoVectorizeAction *m_action;
    HLHSRMode m_mode;
    std::unique_ptr<Batch> m_batch;
    std::vector<SbVec4f> m_projected;
};

ORAVANE_VECTORIZE_END

#endif
