#pragma once

#include <cstdint>
#include <kova/KExport.h>
#include <kova/KStatus.h>

// A time value with its unit. The value is kept in the unit it was given in; conversions go
// through the host's tick: KTime::ticksPerSecond() = 141120000 ticks per second, a number that
// every supported unit divides into a whole number of ticks (hours down to 1/48000 s). Whole
// frames therefore convert exactly: frame 48 at 24 fps is exactly 2.0 seconds, or exactly
// 2 * ticksPerSecond() ticks.
//
// Conversions involving kInvalid yield 0.
class KOVA_API KTime {
public:
    enum Unit {
        kInvalid = 0,
        kHours,
        kMinutes,
        kSeconds,
        kMilliseconds,
        k15FPS,
        k24FPS, // film
        k25FPS, // PAL frames
        k30FPS, // NTSC frames
        k48FPS,
        k50FPS, // PAL fields
        k60FPS, // NTSC fields
        k2FPS,
        k3FPS,
        k4FPS,
        k5FPS,
        k6FPS,
        k8FPS,
        k10FPS,
        k12FPS,
        k16FPS,
        k20FPS,
        k40FPS,
        k72FPS,
        k75FPS,
        k80FPS,
        k90FPS,
        k96FPS,
        k100FPS,
        k120FPS,
        k144FPS,
        k200FPS,
        k240FPS,
        k250FPS,
        k300FPS,
        k375FPS,
        k400FPS,
        k500FPS,
        k600FPS,
        k750FPS,
        k1200FPS,
        k1500FPS,
        k2000FPS,
        k3000FPS,
        k6000FPS,
        k44100FPS, // audio sample rates
        k48000FPS,
        kLast, // one past the last valid unit
        kFilm = k24FPS,
        kGames = k15FPS,
        kPALFrame = k25FPS,
        kNTSCFrame = k30FPS,
        kShowScan = k48FPS,
        kPALField = k50FPS,
        kNTSCField = k60FPS,
    };

    // A value in `unit`; an out-of-range unit is stored as kInvalid.
    KTime(double value = 0.0, Unit unit = uiUnit());

    double value() const { return value_; }
    Unit unit() const { return unit_; }
    void setValue(double value) { value_ = value; }
    // Changes the unit and keeps the number (reinterprets, does not convert); to convert use
    // KTime(t.as(unit), unit).
    KStatus setUnit(Unit unit);

    // This time expressed in `unit`.
    double as(Unit unit) const;
    double asUnits(Unit unit) const { return as(unit); }
    // This time in ticks, rounded to the nearest tick.
    int64_t asTicks() const;

    // The unit new times get by default and the user interface shows; process-wide, k24FPS
    // until changed. setUIUnit fails with kInvalidParameter for kInvalid or an unknown unit.
    static Unit uiUnit();
    static KStatus setUIUnit(Unit unit);

    static int64_t ticksPerSecond();
    // Ticks in one `unit` (0 for kInvalid).
    static int64_t ticksPerUnit(Unit unit);

    // Comparisons and arithmetic work on the times themselves, whatever their units.
    // Results of arithmetic are in the left operand's unit.
    bool operator==(const KTime& other) const;
    bool operator<(const KTime& other) const;
    bool operator!=(const KTime& other) const { return !(*this == other); }
    bool operator>(const KTime& other) const { return other < *this; }
    bool operator<=(const KTime& other) const { return !(other < *this); }
    bool operator>=(const KTime& other) const { return !(*this < other); }

    KTime operator+(const KTime& other) const;
    KTime operator-(const KTime& other) const;
    KTime& operator+=(const KTime& other);
    KTime& operator-=(const KTime& other);
    KTime operator*(double factor) const { return KTime(value_ * factor, unit_); }
    KTime operator/(double divisor) const { return KTime(value_ / divisor, unit_); }

private:
    double value_;
    Unit unit_;
};
