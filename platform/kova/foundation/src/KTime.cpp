#include <atomic>
#include <cmath>
#include <kova/KString.h>
#include <kova/KTime.h>
#include <numeric>

namespace {

constexpr int64_t kTicksPerSecond = 141120000; // 2^9 * 3^2 * 5^4 * 7^2

constexpr int64_t perFrame(int64_t framesPerSecond) {
    return kTicksPerSecond / framesPerSecond;
}

// Ticks in one of each unit, indexed by KTime::Unit.
constexpr int64_t kTicksPerUnit[] = {
    0,                      // kInvalid
    kTicksPerSecond * 3600, // kHours
    kTicksPerSecond * 60,   // kMinutes
    kTicksPerSecond,        // kSeconds
    kTicksPerSecond / 1000, // kMilliseconds
    perFrame(15),
    perFrame(24),
    perFrame(25),
    perFrame(30),
    perFrame(48),
    perFrame(50),
    perFrame(60),
    perFrame(2),
    perFrame(3),
    perFrame(4),
    perFrame(5),
    perFrame(6),
    perFrame(8),
    perFrame(10),
    perFrame(12),
    perFrame(16),
    perFrame(20),
    perFrame(40),
    perFrame(72),
    perFrame(75),
    perFrame(80),
    perFrame(90),
    perFrame(96),
    perFrame(100),
    perFrame(120),
    perFrame(144),
    perFrame(200),
    perFrame(240),
    perFrame(250),
    perFrame(300),
    perFrame(375),
    perFrame(400),
    perFrame(500),
    perFrame(600),
    perFrame(750),
    perFrame(1200),
    perFrame(1500),
    perFrame(2000),
    perFrame(3000),
    perFrame(6000),
    perFrame(44100),
    perFrame(48000),
};
static_assert(std::size(kTicksPerUnit) == KTime::kLast);

constexpr bool dividesExactly() {
    const int64_t rates[] = {1000, 15,  24,  25,   30,   48,   50,   60,   2,     3,    4,
                             5,    6,   8,   10,   12,   16,   20,   40,   72,    75,   80,
                             90,   96,  100, 120,  144,  200,  240,  250,  300,   375,  400,
                             500,  600, 750, 1200, 1500, 2000, 3000, 6000, 44100, 48000};
    for (const int64_t rate : rates) {
        if (kTicksPerSecond % rate != 0) {
            return false;
        }
    }
    return true;
}
static_assert(dividesExactly(), "every unit must be a whole number of ticks");

bool isValid(KTime::Unit unit) {
    return unit > KTime::kInvalid && unit < KTime::kLast;
}

std::atomic<KTime::Unit> uiUnitSetting{KTime::k24FPS};

// value * from / to with a single rounding whenever one tick count divides the other.
double convert(double value, KTime::Unit from, KTime::Unit to) {
    if (!isValid(from) || !isValid(to)) {
        return 0.0;
    }
    const int64_t a = kTicksPerUnit[from];
    const int64_t b = kTicksPerUnit[to];
    if (a % b == 0) {
        return value * static_cast<double>(a / b);
    }
    if (b % a == 0) {
        return value / static_cast<double>(b / a);
    }
    const int64_t g = std::gcd(a, b);
    return value * static_cast<double>(a / g) / static_cast<double>(b / g);
}

} // namespace

KTime::KTime(double value, Unit unit) : value_(value), unit_(isValid(unit) ? unit : kInvalid) {}

KStatus KTime::setUnit(Unit unit) {
    if (!isValid(unit)) {
        return KStatus(KStatus::kInvalidParameter, "KTime::setUnit: unknown unit");
    }
    unit_ = unit;
    return KStatus();
}

double KTime::as(Unit unit) const {
    return convert(value_, unit_, unit);
}

int64_t KTime::asTicks() const {
    return isValid(unit_) ? std::llround(value_ * static_cast<double>(kTicksPerUnit[unit_])) : 0;
}

KTime::Unit KTime::uiUnit() {
    return uiUnitSetting.load(std::memory_order_relaxed);
}

KStatus KTime::setUIUnit(Unit unit) {
    if (!isValid(unit)) {
        return KStatus(KStatus::kInvalidParameter, "KTime::setUIUnit: unknown unit");
    }
    uiUnitSetting.store(unit, std::memory_order_relaxed);
    return KStatus();
}

int64_t KTime::ticksPerSecond() {
    return kTicksPerSecond;
}

int64_t KTime::ticksPerUnit(Unit unit) {
    return isValid(unit) ? kTicksPerUnit[unit] : 0;
}

// Times compare by their tick counts in double precision, which are exact for whole frames.
bool KTime::operator==(const KTime& other) const {
    return value_ * static_cast<double>(ticksPerUnit(unit_)) ==
           other.value_ * static_cast<double>(ticksPerUnit(other.unit_));
}

bool KTime::operator<(const KTime& other) const {
    return value_ * static_cast<double>(ticksPerUnit(unit_)) <
           other.value_ * static_cast<double>(ticksPerUnit(other.unit_));
}

KTime KTime::operator+(const KTime& other) const {
    return KTime(value_ + other.as(unit_), unit_);
}

KTime KTime::operator-(const KTime& other) const {
    return KTime(value_ - other.as(unit_), unit_);
}

KTime& KTime::operator+=(const KTime& other) {
    return *this = *this + other;
}

KTime& KTime::operator-=(const KTime& other) {
    return *this = *this - other;
}
