#pragma once

#include <concepts>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Rect.h"

namespace orvane::display::geometry {

// An affine transformation, stored by rows; the last row 0, 0, 1 is implied. It maps column
// vectors: x' = m00 x + m01 y + m02 and y' = m10 x + m11 y + m12. The product A * B applies B
// first.
struct ORVANE_EXPORT Matrix {
    double m00 = 1, m01 = 0, m02 = 0;
    double m10 = 0, m11 = 1, m12 = 0;

    // The identity.
    static const Matrix s_identity;

    // The identity.
    constexpr Matrix() = default;
    // The six elements, row by row.
    constexpr Matrix(double m00_, double m01_, double m02_, double m10_, double m11_, double m12_)
        : m00(m00_), m01(m01_), m02(m02_), m10(m10_), m11(m11_), m12(m12_) {}

    // Converts from the platform's transformation, which stores its elements by columns: a, b, c,
    // d, tx, ty.
    template <typename M>
    requires requires(const M& m) {
        m.a;
        m.b;
        m.c;
        m.d;
        m.tx;
        m.ty;
    }
    constexpr explicit Matrix(const M& m)
        : m00(m.a), m01(m.c), m02(m.tx), m10(m.b), m11(m.d), m12(m.ty) {}
    // Converts to the platform's transformation.
    template <typename M>
    requires(requires(M m) {
        m.a;
        m.b;
        m.c;
        m.d;
        m.tx;
        m.ty;
    } && std::default_initializable<M>) constexpr explicit
    operator M() const {
        M m;
        m.a = m00;
        m.b = m10;
        m.c = m01;
        m.d = m11;
        m.tx = m02;
        m.ty = m12;
        return m;
    }

    // Compares exactly, without a tolerance. A matrix with a NaN differs from itself.
    friend constexpr bool operator==(const Matrix&, const Matrix&) = default;

    // The product: `other` is applied first.
    Matrix operator*(const Matrix& other) const;
    // Whether this is exactly the identity.
    constexpr bool isIdentity() const { return *this == Matrix(); }

    // Returns the inverse; the identity for a singular matrix.
    Matrix inverse() const;
    // Sets the identity.
    void reset() { *this = s_identity; }

    // Replaces the matrix by a scaling. It does not compose with what was there.
    void setScale(double sx, double sy) { *this = {sx, 0, 0, 0, sy, 0}; }
    // Replaces the matrix by a translation. It does not compose with what was there.
    void setTranslate(double tx, double ty) { *this = {1, 0, tx, 0, 1, ty}; }

    // Returns the image of a point.
    constexpr Point<double> mapPoint(const Point<double>& p) const {
        return {m00 * p.x + m01 * p.y + m02, m10 * p.x + m11 * p.y + m12};
    }
    // Returns the bounding box of the images of the four corners.
    Rect<double> mapRect(const Rect<double>& r) const;

    // Writes the three rows to standard output, for debugging.
    void print() const;
};

inline constexpr Matrix Matrix::s_identity{};

}  // namespace orvane::display::geometry
