#pragma once

#include <cstddef>
#include <kova/nurbs/ControlVertex.h>
#include <kova/nurbs/CurveForm.h>
#include <kova/nurbs/NurbsExport.h>
#include <kova/nurbs/Vec3.h>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace kova::nurbs {

// A NURBS curve in the host's conventions, as an immutable value.
//
// - Degree p >= 1 (at most kMaxDegree) and n >= p + 1 control vertices (x, y, z, w), stored in
//   object space; mapping to world space is the caller's business.
// - Knots in the host convention: n + p - 1 non-decreasing values (see KnotVector.h), no value
//   repeated more than p times. The knot domain is [knots[p-1], knots[n-1]].
// - Form: open, closed or periodic (CurveForm.h). A periodic curve stores its overlap explicitly:
//   CV n-p+i repeats CV i for i < p, and its knots extend beyond the domain on both sides.
//
// Evaluation follows the textbook definition C(t) = sum N_i,p(t) w_i P_i / sum N_i,p(t) w_i on
// the full knot vector. A parameter selects the knot span [U[k], U[k+1]) that contains it, so at a
// repeated interior knot the span on its right is used; the end of the domain uses the last
// non-empty span. Parameters outside the domain are clamped to it. The ends of a clamped curve and
// the joints at knots of multiplicity p are exact: the point there is the CV itself, bit for bit.
//
// Evaluation allocates nothing (fixed stack buffers sized by kMaxDegree), and every const member
// function may be called from any number of threads at once.
//
// Bad data never crashes an evaluation. The constructor accepts anything; validate() says what is
// wrong. A curve whose structure cannot be evaluated (see evaluable()) returns NaN points,
// derivatives and parameters and zero lengths. A curve that is evaluable but fails validate()
// for its values (weights <= 0, non-finite CV coordinates, a periodic overlap that does not
// match) is evaluated by the same formulas, which may then yield infinities or NaN.
class KOVA_NURBS_API Curve {
public:
    // Highest supported degree; validate() rejects higher ones.
    static constexpr int kMaxDegree = 15;
    // Highest derivative order that derivativeAt() computes.
    static constexpr int kMaxDerivativeOrder = 2;
    // Finest arc-length tolerance; smaller, zero, negative or NaN tolerances are raised to it.
    static constexpr double kMinTolerance = 1e-12;
    // Coarsest arc-length tolerance actually used; coarser ones are lowered to it (see below).
    static constexpr double kMaxTolerance = 1e-7;

    // An empty curve (no CVs, not evaluable).
    Curve() = default;
    // A curve from its degree, form, CVs and host knots, taken as given.
    Curve(int degree, Form form, std::vector<ControlVertex> cvs, std::vector<double> knots);

    // --- Builders. Each returns a valid curve for sensible input; otherwise validate() tells.

    // The straight line from a to b: degree 1, 2 CVs, domain [0, 1].
    static Curve line(const Vec3& a, const Vec3& b);
    // The polyline through `points`: degree 1, knots 0, 1, ..., n-1 (CV j sits at parameter j).
    static Curve polyline(std::span<const Vec3> points);
    // The Bezier curve of degree cvs.size() - 1 on the domain [0, 1].
    static Curve bezier(std::vector<ControlVertex> cvs);
    // The open B-spline of `degree` with `points` as CVs and a clamped uniform knot vector
    // (host knots: p zeros, 1, 2, ..., n-p-1, p copies of n-p); domain [0, n - p].
    static Curve clampedUniform(int degree, std::span<const Vec3> points);
    // The periodic uniform B-spline of `degree` on the closed polygon `polygon` (m distinct
    // points, the closing edge implied): m + degree CVs (the first `degree` points repeated at
    // the end), host knots i - p + 1 for i = 0 .. m + 2p - 2, domain [0, m].
    static Curve periodicUniform(int degree, std::span<const Vec3> polygon);
    // The circle of `radius` around `center` in the plane z = center.z, as a rational quadratic
    // starting at center + (radius, 0, 0) and running counter-clockwise over the domain [0, 1],
    // one quarter per interval of 0.25 (double knots at the quarters). Form::Periodic gives the
    // periodic representation with 10 CVs (8 distinct, the first 2 repeated); any other form
    // gives the closed, clamped representation with 9 CVs (the last repeating the first).
    static Curve circle(const Vec3& center, double radius, Form form = Form::Closed);
    // A curve given with a full knot vector (n + p + 1 knots, as files store them); the first and
    // last knot are dropped (KnotVector.h).
    static Curve fromFullKnots(int degree, Form form, std::vector<ControlVertex> cvs,
                               std::span<const double> fullKnots);

    // --- Data.

    int degree() const { return degree_; }
    Form form() const { return form_; }
    int numCVs() const { return static_cast<int>(cvs_.size()); }
    const std::vector<ControlVertex>& cvs() const { return cvs_; }
    // The host knots (n + p - 1 of them for a well-formed curve).
    const std::vector<double>& knots() const { return knots_; }
    // The full knot vector (n + p + 1 knots), made as fullKnotsFromHost() describes; empty when
    // the host knots cannot be extended.
    const std::vector<double>& fullKnots() const { return fullKnots_; }
    // True when some CV has a weight other than 1.
    bool isRational() const { return rational_; }

    // An empty string for a valid curve, else one sentence naming the first problem found:
    // degree below 1 or above kMaxDegree, unknown form, too few CVs, wrong knot count, a
    // non-finite knot, decreasing knots, a knot repeated more than `degree` times, an empty knot
    // domain, a non-finite CV coordinate or weight, a weight <= 0 (weights must be positive), a
    // closed curve whose ends do not meet, a periodic curve whose last `degree` CVs do not repeat
    // its first ones or whose knot intervals do not repeat with its period. Geometric matches
    // (ends, overlap, intervals) are checked to 1e-10 relative to the size of the data.
    std::string validate() const;
    bool isValid() const { return validate().empty(); }
    // True when the structure can be evaluated: degree in [1, kMaxDegree], at least p + 1 CVs,
    // the right number of finite non-decreasing knots and a non-empty domain. Weights and CV
    // values are not checked.
    bool evaluable() const { return evaluable_; }

    // --- Evaluation.

    // The knot domain (start, end): host knots p-1 and n-1. (NaN, NaN) when not evaluable.
    std::pair<double, double> knotDomain() const;

    // The cartesian point at parameter t (clamped to the domain).
    Vec3 pointAt(double t) const;
    // The derivative of the given order (0 = the point, 1, 2) with respect to the parameter at t,
    // rational curves by the quotient rule. Orders above the degree give the zero vector; an
    // order outside [0, kMaxDerivativeOrder] gives NaN.
    Vec3 derivativeAt(double t, int order) const;
    // The tangent dC/dt at t: the first derivative, not normalised (its length is the parametric
    // speed). Normalise it yourself for a unit direction; it is zero where the curve stops.
    Vec3 tangentAt(double t) const { return derivativeAt(t, 1); }

    // Points at `count` parameters (each clamped to the domain), written as x, y, z triples to
    // xyzOut (3 * count doubles). Walks the knot spans incrementally, so ascending parameters
    // are cheapest; any order works. Allocates nothing.
    void samplePoints(const double* params, std::size_t count, double* xyzOut) const;

    // --- Arc length.
    //
    // Integrated per knot span with the 32-point Gauss-Legendre rule. A piece is accepted when the
    // Legendre series that interpolates the speed |C'| at the rule's nodes ends in coefficients,
    // and misses the speed at the piece's ends by amounts, small enough that its integral is
    // within the tolerance, relative to the span's length, everywhere in the piece (not only
    // over the whole); otherwise it is halved, the budget halving with it, down to 2^-12 of a
    // span. The speed is evaluated from the span's polynomial form, a few multiplications a
    // point. The tolerance is a relative accuracy, clamped to [kMinTolerance, kMaxTolerance]:
    // coarser requests (the host's customary 1e-3) are served at kMaxTolerance, which costs
    // little more and keeps lengths, and the lengths behind parameters from length, good to about
    // that, even near cusps, where the speed almost vanishes. Degree-1 curves are measured
    // exactly, as sums of chords.

    // The length of the whole curve.
    double length(double tolerance) const;
    // The length of the piece between t0 and t1 (in either order, each clamped to the domain);
    // NaN when either is NaN.
    double lengthBetween(double t0, double t1, double tolerance) const;
    // The parameter at arc length s from the start of the domain: s <= 0 (or NaN) gives the
    // start, s >= length() the end. Builds an ArcLengthTable on each call, which integrates the
    // whole curve; build one yourself for many queries on the same curve.
    double paramFromLength(double s, double tolerance) const;

    // --- Parameters of the CVs.

    // The Greville abscissa of every CV: for CV j the mean of the `degree` host knots starting
    // at host knot j, which equals the usual full-vector definition. Empty when the degree is
    // below 1 or there are fewer than n + p - 1 knots.
    std::vector<double> grevilleAbscissae() const;

private:
    friend class ArcLengthTable;

    // Index (full knot vector) of the span that evaluates t, which is clamped to the domain.
    int spanOf(double& t) const;
    // Derivatives of orders 0 .. order (order <= kMaxDerivativeOrder) at t within `span`.
    void evaluate(int span, double t, int order, Vec3* out) const;
    // |C'(t)| within `span`.
    double speed(int span, double t) const;
    // Distance between the points at a and b of `span`: the arc length of a degree-1 piece.
    double chordLength(int span, double a, double b) const;
    // Measures [a, b] inside `span` and reports the pieces it accepted, in order, to
    // piece(const detail::MeasuredPiece&). Defined in src/MeasureSpan.h.
    template <class Piece>
    void measureSpan(int span, double a, double b, double tolerance, Piece&& piece) const;
    // The tolerance actually used for a requested one.
    static double usableTolerance(double tolerance);

    int degree_ = 0;
    Form form_ = Form::Open;
    std::vector<ControlVertex> cvs_;
    std::vector<double> knots_;
    std::vector<double> fullKnots_;
    bool rational_ = false;
    bool evaluable_ = false;
    double scale_ = 0.0; // diagonal of the CVs' bounding box
    int firstSpan_ = 0;  // first and last non-empty spans of the domain (full indexing)
    int lastSpan_ = 0;
};

} // namespace kova::nurbs
