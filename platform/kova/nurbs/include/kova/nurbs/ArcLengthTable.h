#pragma once

#include <cstddef>
#include <kova/nurbs/Curve.h>
#include <kova/nurbs/NurbsExport.h>
#include <vector>

namespace kova::nurbs {

// The cumulative arc length of a curve, integrated once, for many length <-> parameter queries.
//
// Building it integrates every knot span of the domain exactly as Curve::length does (so
// totalLength() equals it bit for bit) and keeps each accepted piece as the Legendre series of
// its arc length: the integral of the series that interpolates the speed |C'| at the nodes of the
// Gauss-Legendre rule that measured the piece. The integration accepts a piece only when that
// series is within the tolerance everywhere in the piece, so lengthAt() is as accurate inside a
// piece as at its ends. lengthAt() sums one series; paramAt() solves lengthAt(t) = s inside the
// piece that holds s from a cubic Hermite guess by Halley's method on the series (its derivative,
// the interpolated speed, is the slope), safeguarded by bisection, to full double precision of
// the parameter: two or three sums of a series in all. The two are exact inverses of each other
// up to that precision. Linear pieces are kept as chords.
//
// The table keeps its own copy of the curve. Queries allocate nothing and may run concurrently.
class KOVA_NURBS_API ArcLengthTable {
public:
    // An empty table (length 0, NaN parameters).
    ArcLengthTable() = default;
    // Integrates `curve` with `tolerance` (as Curve::length). A curve that is not evaluable gives
    // an empty table.
    ArcLengthTable(Curve curve, double tolerance);

    const Curve& curve() const { return curve_; }
    // The length of the whole curve.
    double totalLength() const { return total_; }
    // The arc length from the start of the domain to t (clamped to the domain); 0 for an empty
    // table.
    double lengthAt(double t) const;
    // The parameter at arc length s from the start: s <= 0 (or NaN) gives the start of the
    // domain, s >= totalLength() the end. NaN for an empty table. Where the curve stands still
    // (a run of coincident CVs) several parameters share a length; one of them is returned.
    double paramAt(double s) const;

private:
    struct Piece {
        int span;           // knot span (full indexing)
        int degree;         // degree of the length series; -1 for a chord
        std::size_t series; // index of the series' first coefficient in series_
        double t0;          // parameter range of the piece
        double t1;
        double start;  // arc length at t0
        double size;   // arc length of the piece
        double speed0; // |C'| at t0 and t1, for the first guess of paramAt()
        double speed1;
    };
    struct PieceLength {
        double length;    // from the piece's start
        double slope;     // its first and second derivative with respect to the parameter
        double curvature; // (0 for a chord)
    };

    // Length from the piece's start to t (inside it) and its derivatives.
    PieceLength pieceLength(const Piece& piece, double t) const;
    // First guess of the parameter at length `target` into the piece: cubic Hermite
    // interpolation of t(s) from the ends' values and slopes 1 / speed.
    static double firstGuess(const Piece& piece, double target);

    Curve curve_;
    std::vector<Piece> pieces_;
    std::vector<double> series_;
    double total_ = 0.0;
};

} // namespace kova::nurbs
