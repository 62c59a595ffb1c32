#ifndef ORAVANE_API_H
#define ORAVANE_API_H

/// Marks a class or function that programs may use; everything else in the library stays hidden.
#define ORAVANE_API __attribute__((visibility("default")))

/// Opens and closes the namespace of the vector output classes. The toolkit's own library exports classes of
/// the very same names; an inline namespace gives ours symbols of their own, while programs write the plain
/// name. A forward declaration of one of these classes must stand inside the same pair.
#define ORAVANE_VECTORIZE_BEGIN inline namespace po_vec {
#define ORAVANE_VECTORIZE_END }

#endif
