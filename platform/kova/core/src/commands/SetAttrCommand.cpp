#include "commands/BuiltInCommands.h"
#include "commands/Numbers.h"
#include "detail/Attribute.h"
#include "detail/CommandArgs.h"
#include "detail/PlugParser.h"

#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnVectorArrayData.h>

namespace kova::commands {

namespace {

KStatus readNumbers(const std::vector<std::string>& words, std::size_t first, std::size_t count,
                    std::vector<double>& out) {
    if (words.size() != first + count) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("expected " + std::to_string(count) + " value(s), got " +
                               std::to_string(words.size() > first ? words.size() - first : 0)));
    }
    out.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (!parseNumber(words[first + i], out[i])) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("'" + words[first + i] + "' is not a number"));
        }
    }
    return KStatus();
}

// An array's length (the first value) and then its values, `width` numbers per element.
KStatus readArray(const std::vector<std::string>& words, unsigned int width,
                  std::vector<double>& out) {
    double count = 0.0;
    if (words.size() < 2 || !parseNumber(words[1], count) || count < 0.0 ||
        count != static_cast<double>(static_cast<unsigned int>(count))) {
        return KStatus(KStatus::kInvalidParameter, "expected the array length first");
    }
    return readNumbers(words, 2, static_cast<std::size_t>(count) * width, out);
}

KStatus setArrayData(KPlug& plug, const std::string& type, const std::vector<std::string>& words) {
    std::vector<double> numbers;
    const bool vectors = type == "vectorArray";
    if (KStatus status = readArray(words, vectors ? 3 : 1, numbers); !status) {
        return status;
    }
    KStatus status;
    KObject data;
    if (vectors) {
        KVectorArray values;
        for (std::size_t i = 0; status && i + 2 < numbers.size(); i += 3) {
            status = values.append(KVector(numbers[i], numbers[i + 1], numbers[i + 2]));
        }
        data = KFnVectorArrayData().create(values, &status);
    } else {
        data = KFnDoubleArrayData().create(
            KDoubleArray(numbers.data(), static_cast<unsigned int>(numbers.size())), &status);
    }
    return status ? plug.setKObject(data) : status;
}

} // namespace

KStatus setAttr(const Args& args, KStringArray&) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {{"type", "typ", 1}}); !status) {
        return status;
    }
    const auto& words = parsed.positional();
    if (words.size() < 2) {
        return KStatus(KStatus::kInvalidParameter, "expected a plug and a value");
    }
    KStatus status;
    KPlug plug = detail::parsePlug(words[0], status);
    if (!status) {
        return status;
    }
    const detail::Attribute& a = *plug.path().back().attribute;
    const std::string type = parsed.value("type");
    std::vector<double> numbers;
    if (type == "string" || (type.empty() && a.kind == detail::Attribute::Kind::Typed &&
                             a.dataType == KFnData::kString)) {
        return words.size() == 2 ? plug.setString(KString(words[1]))
                                 : KStatus(KStatus::kInvalidParameter, "expected one string");
    }
    if (type == "doubleArray" || type == "vectorArray") {
        return setArrayData(plug, type, words);
    }
    if (type == "matrix" || (type.empty() && a.kind == detail::Attribute::Kind::Matrix)) {
        status = readNumbers(words, 1, 16, numbers);
        KMatrix matrix;
        for (std::size_t i = 0; status && i < 16; ++i) {
            matrix.matrix[i / 4][i % 4] = numbers[i];
        }
        return status ? plug.setMatrix(matrix) : status;
    }
    if (!type.empty()) {
        return KStatus(KStatus::kInvalidParameter, KString("unknown value type '" + type + "'"));
    }
    if (a.kind == detail::Attribute::Kind::Unit && a.unitType == KFnUnitAttribute::kTime) {
        status = readNumbers(words, 1, 1, numbers);
        return status ? plug.setTime(KTime(numbers[0], KTime::uiUnit())) : status;
    }
    if (a.kind == detail::Attribute::Kind::Numeric || a.kind == detail::Attribute::Kind::Unit) {
        const unsigned int count = a.kind == detail::Attribute::Kind::Unit
                                       ? 1
                                       : KFnNumericData::componentCount(a.numericType);
        status = readNumbers(words, 1, count, numbers);
        return status ? plug.setNumbers(numbers.data(), count) : status;
    }
    return KStatus(KStatus::kInvalidParameter, "this kind of attribute cannot be set by a command");
}

} // namespace kova::commands
