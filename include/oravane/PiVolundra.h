#ifndef ORAVANE_PIVOLUNDRA_H
#define ORAVANE_PIVOLUNDRA_H

#include <oravane/OravaneApi.h>

#include <vector>

class PbIsovaluesList;

/// Base of the contouring engines: keeps the isovalues off the values of the field. A contour line exactly
/// through a node of the mesh is a case that the topology of contours does not treat; so each isovalue that a
/// data value equals is moved, by one per cent of the distance to the nearest other data value (more only
/// where that is lost to the rounding of floats): up when some data value is above it, else down.
///
/// \code
///   setIsovaluesList(&levels);                                  // an engine, before its topology
///   adjustIsovalList(numNodes, values, 0, nullptr, 0, nullptr); // m_isovalues[0 .. m_numIsovalues - 1]
/// \endcode
///
/// A field that is constant at the isovalue, and an isovalue that no data value equals, are left alone. Data
/// values that are not numbers equal nothing. An isovalue may stay on a data value where floats have no room
/// (at the ends of their range). Each call costs about one pass over the data, and some more for isovalues
/// that coincide.
///
/// Arrays of data: `num` values; a null array counts as empty.
class ORAVANE_API PiVolundra {
public:
    PiVolundra();

    /// The list is not owned and must live until the last `adjustIsovalList`; null means no isovalues.
    void setIsovaluesList(const PbIsovaluesList *list) { m_isovaluesList = list; }

protected:
    /// Moves one isovalue off the data, and sets `m_isAdjusted`.
    void adjustIsoval(int num, const float *data, float &isovalue);

    /// The same off three arrays at once. An isovalue is left alone when as many values equal it, in all
    /// three arrays together, as the first array has.
    void adjustIsovalMultiple(int num1, const float *data1, int num2, const float *data2, int num3,
                              const float *data3, float &isovalue);

    /// Copies the list into `m_isovalues` and moves each value by itself, as `adjustIsovalMultiple` does;
    /// where isovalues are much closer together than data values their order may change. `m_isAdjusted` is 1
    /// when any was moved. The list itself is never changed.
    void adjustIsovalList(int num1, const float *data1, int num2, const float *data2, int num3,
                          const float *data3);

    const PbIsovaluesList *m_isovaluesList = nullptr;
    int m_numIsovalues = 0;
    /// The adjusted list: `m_numIsovalues` values, with room for 100 at least.
    std::vector<float> m_isovalues;
    int m_isAdjusted = 0;
};

#endif
