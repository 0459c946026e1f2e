#include "commands/BuiltInCommands.h"
#include "commands/Numbers.h"
#include "detail/Attribute.h"
#include "detail/CommandArgs.h"
#include "detail/PlugParser.h"

#include <kova/KDataHandle.h>
#include <kova/detail/MatrixData.h>
#include <kova/detail/StringData.h>
#include <sstream>

namespace kova::commands {

namespace {

using detail::Attribute;
using detail::Value;

KStatus append(KStringArray& result, const std::string& word) {
    return result.append(KString(word));
}

// Appends the words of `value`, described by `attribute`.
KStatus appendValue(const Value& value, const Attribute& attribute, KStringArray& result) {
    KStatus status;
    switch (value.kind) {
    case Value::Kind::Numeric: {
        const unsigned int count = attribute.kind == Attribute::Kind::Numeric
                                       ? KFnNumericData::componentCount(attribute.numericType)
                                       : 1;
        for (unsigned int i = 0; status && i < count; ++i) {
            status = append(result, numberText(value.numbers[i]));
        }
        return status;
    }
    case Value::Kind::Time:
        return append(result, numberText(value.time.value()));
    case Value::Kind::Matrix:
        for (int i = 0; status && i < 16; ++i) {
            status = append(result, numberText(value.matrix.matrix[i / 4][i % 4]));
        }
        return status;
    case Value::Kind::Data: {
        if (!value.data) {
            return KStatus();
        }
        if (const auto* text = dynamic_cast<const detail::StringData*>(value.data.get())) {
            return result.append(text->text);
        }
        std::istringstream words(value.data->toText().str());
        for (std::string word; status && words >> word;) {
            status = append(result, word);
        }
        return status;
    }
    case Value::Kind::Compound:
        for (std::size_t i = 0; status && i < value.children.size(); ++i) {
            status = appendValue(value.children[i], *attribute.children[i], result);
        }
        return status;
    case Value::Kind::Array:
        for (auto it = value.elements.begin(); status && it != value.elements.end(); ++it) {
            status = appendValue(it->second, attribute, result);
        }
        return status;
    case Value::Kind::Empty:
        break;
    }
    return KStatus(KStatus::kInvalidParameter,
                   KString("'" + attribute.longName + "' has no value"));
}

} // namespace

KStatus getAttr(const Args& args, KStringArray& result) {
    detail::CommandArgs parsed;
    if (KStatus status = parsed.parse(args, {}); !status) {
        return status;
    }
    if (parsed.positional().size() != 1) {
        return KStatus(KStatus::kInvalidParameter, "expected one plug");
    }
    KStatus status;
    const KPlug plug = detail::parsePlug(parsed.positional().front(), status);
    KDataHandle handle;
    if (status) {
        status = plug.getValue(handle);
    }
    return status ? appendValue(*handle.value(), *handle.attributeEntity(), result) : status;
}

} // namespace kova::commands
