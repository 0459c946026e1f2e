#include "detail/Attribute.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"

#include <cmath>
#include <kova/KDataHandle.h>
#include <kova/KFailureInjection.h>
#include <kova/detail/MatrixData.h>
#include <kova/detail/PluginData.h>
#include <kova/detail/StringData.h>
#include <mutex>

using kova::detail::Attribute;
using kova::detail::Value;

namespace {

KStatus wrongKind(const char* what) {
    return KStatus(KStatus::kInvalidParameter,
                   KString(std::string("the attribute does not hold ") + what));
}

bool holdsNumbers(const Attribute& a) {
    return a.kind == Attribute::Kind::Numeric ||
           (a.kind == Attribute::Kind::Unit && a.unitType != KFnUnitAttribute::kTime);
}

// Rounds or clamps a number to what a numeric kind can hold.
double fitNumber(const Attribute& a, double value) {
    if (a.kind != Attribute::Kind::Numeric) {
        return value;
    }
    if (a.numericType == KFnNumericData::kBoolean) {
        return value != 0.0 ? 1.0 : 0.0;
    }
    if (KFnNumericData::isIntegral(a.numericType)) {
        return std::trunc(value);
    }
    if (a.numericType == KFnNumericData::kFloat || a.numericType == KFnNumericData::k2Float ||
        a.numericType == KFnNumericData::k3Float) {
        return static_cast<float>(value);
    }
    return value;
}

} // namespace

KDataHandle::KDataHandle(Value* value, std::shared_ptr<Attribute> attribute,
                         kova::detail::Node* node, std::shared_ptr<Value> owned)
    : value_(value), attribute_(std::move(attribute)), node_(node), owned_(std::move(owned)) {}

KFnData::Type KDataHandle::type() const {
    if (value_ == nullptr) {
        return KFnData::kInvalid;
    }
    if (value_->kind == Value::Kind::Matrix) {
        return KFnData::kMatrix;
    }
    if (value_->kind != Value::Kind::Data || !value_->data ||
        value_->data->dataType() == KFnData::kPlugin) {
        return KFnData::kInvalid;
    }
    return value_->data->dataType();
}

KTypeId KDataHandle::typeId() const {
    const auto* plugin =
        value_ ? kova::detail::entityAs<kova::detail::PluginData>(value_->data) : nullptr;
    return plugin ? plugin->typeId() : KTypeId();
}

KObject KDataHandle::data() const {
    if (value_ == nullptr) {
        return KObject();
    }
    if (value_->kind == Value::Kind::Matrix) {
        return KObject(std::make_shared<kova::detail::MatrixData>(value_->matrix));
    }
    return value_->data ? KObject(value_->data) : KObject();
}

double KDataHandle::asDouble() const {
    if (value_ == nullptr) {
        return 0.0;
    }
    switch (value_->kind) {
    case Value::Kind::Numeric:
        return value_->numbers[0];
    case Value::Kind::Time:
        return value_->time.value();
    default:
        return 0.0;
    }
}

float KDataHandle::asFloat() const {
    return static_cast<float>(asDouble());
}

int KDataHandle::asInt() const {
    return static_cast<int>(std::trunc(asDouble()));
}

bool KDataHandle::asBool() const {
    return asDouble() != 0.0;
}

KString KDataHandle::asString() const {
    const auto* text =
        value_ ? kova::detail::entityAs<kova::detail::StringData>(value_->data) : nullptr;
    return text ? text->text : KString();
}

KTime KDataHandle::asTime() const {
    if (value_ != nullptr && value_->kind == Value::Kind::Time) {
        return value_->time;
    }
    return KTime(asDouble(), KTime::uiUnit());
}

KMatrix KDataHandle::asMatrix() const {
    if (value_ == nullptr) {
        return KMatrix();
    }
    if (value_->kind == Value::Kind::Matrix) {
        return value_->matrix;
    }
    const auto* matrix = kova::detail::entityAs<kova::detail::MatrixData>(value_->data);
    return matrix ? matrix->matrix : KMatrix();
}

KFloatMatrix KDataHandle::asFloatMatrix() const {
    return KFloatMatrix(asMatrix());
}

const double* KDataHandle::asNumbers() const {
    static const double zeros[4] = {0.0, 0.0, 0.0, 0.0};
    return value_ && value_->kind == Value::Kind::Numeric ? value_->numbers.data() : zeros;
}

KPxData* KDataHandle::asPluginData() const {
    const auto* plugin =
        value_ ? kova::detail::entityAs<kova::detail::PluginData>(value_->data) : nullptr;
    return plugin ? plugin->instance() : nullptr;
}

KObject KDataHandle::asMesh() const {
    return type() == KFnData::kMesh ? data() : KObject();
}

KObject KDataHandle::asNurbsCurve() const {
    return type() == KFnData::kNurbsCurve ? data() : KObject();
}

KMatrix KDataHandle::geometryTransformMatrix() const {
    return value_ && value_->geometryMatrix ? *value_->geometryMatrix : KMatrix();
}

KDataHandle KDataHandle::child(unsigned int index) const {
    if (value_ == nullptr || value_->kind != Value::Kind::Compound ||
        index >= value_->children.size() || index >= attribute_->children.size()) {
        return KDataHandle();
    }
    return KDataHandle(&value_->children[index], attribute_->children[index], node_, owned_);
}

KDataHandle KDataHandle::child(const KObject& attribute) const {
    const Attribute* a = kova::detail::attributeOf(attribute);
    if (a == nullptr || attribute_ == nullptr || a->parent != attribute_.get()) {
        return KDataHandle();
    }
    return child(static_cast<unsigned int>(a->indexInParent));
}

KStatus KDataHandle::set(const KObject& data) {
    if (KFailureInjection::shouldFail("KDataHandle::set")) {
        return KFailureInjection::failure("KDataHandle::set");
    }
    if (value_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle");
    }
    auto entity = kova::detail::sharedEntityAs<kova::detail::DataObject>(data.entity());
    if (!data.isNull() && !entity) {
        return KStatus(KStatus::kInvalidParameter, "the object is not data");
    }
    if (attribute_->kind == Attribute::Kind::Matrix) {
        const auto* matrix = kova::detail::entityAs<kova::detail::MatrixData>(data.entity());
        if (matrix == nullptr) {
            return wrongKind("this data");
        }
        return setKMatrix(matrix->matrix);
    }
    if (attribute_->kind != Attribute::Kind::Typed &&
        attribute_->kind != Attribute::Kind::Generic) {
        return wrongKind("data");
    }
    if (entity && !attribute_->acceptsDataObject(*entity)) {
        return wrongKind("this kind of data");
    }
    value_->kind = Value::Kind::Data;
    value_->data = std::move(entity);
    value_->geometryMatrix.reset();
    return KStatus();
}

KStatus KDataHandle::setNumber(double number, const char* operation) {
    if (KFailureInjection::shouldFail(operation)) {
        return KFailureInjection::failure(operation);
    }
    if (value_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle");
    }
    const Attribute& a = *attribute_;
    if (a.kind == Attribute::Kind::Unit && a.unitType == KFnUnitAttribute::kTime) {
        value_->kind = Value::Kind::Time;
        value_->time.setValue(number);
        return KStatus();
    }
    if (!holdsNumbers(a) && !(a.kind == Attribute::Kind::Generic && a.acceptsNumbers)) {
        return wrongKind("numbers");
    }
    value_->kind = Value::Kind::Numeric;
    value_->numbers[0] = fitNumber(a, number);
    return KStatus();
}

KStatus KDataHandle::setDouble(double value) {
    return setNumber(value, "KDataHandle::setDouble");
}
KStatus KDataHandle::setFloat(float value) {
    return setNumber(value, "KDataHandle::setFloat");
}
KStatus KDataHandle::setInt(int value) {
    return setNumber(value, "KDataHandle::setInt");
}
KStatus KDataHandle::setBool(bool value) {
    return setNumber(value ? 1.0 : 0.0, "KDataHandle::setBool");
}

KStatus KDataHandle::setNumbers(const double* values, unsigned int count) {
    if (KFailureInjection::shouldFail("KDataHandle::setNumbers")) {
        return KFailureInjection::failure("KDataHandle::setNumbers");
    }
    if (value_ == nullptr || values == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle or values");
    }
    if (!holdsNumbers(*attribute_) ||
        KFnNumericData::componentCount(attribute_->numericType) != count) {
        return wrongKind("that many numbers");
    }
    value_->kind = Value::Kind::Numeric;
    for (unsigned int i = 0; i < count; ++i) {
        value_->numbers[i] = fitNumber(*attribute_, values[i]);
    }
    return KStatus();
}

KStatus KDataHandle::setString(const KString& text) {
    if (KFailureInjection::shouldFail("KDataHandle::setString")) {
        return KFailureInjection::failure("KDataHandle::setString");
    }
    if (value_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle");
    }
    if ((attribute_->kind != Attribute::Kind::Typed &&
         attribute_->kind != Attribute::Kind::Generic) ||
        !attribute_->acceptsData(KFnData::kString)) {
        return wrongKind("strings");
    }
    value_->kind = Value::Kind::Data;
    value_->data = std::make_shared<kova::detail::StringData>(text);
    return KStatus();
}

KStatus KDataHandle::setTime(const KTime& time) {
    if (KFailureInjection::shouldFail("KDataHandle::setTime")) {
        return KFailureInjection::failure("KDataHandle::setTime");
    }
    if (value_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle");
    }
    if (attribute_->kind != Attribute::Kind::Unit ||
        attribute_->unitType != KFnUnitAttribute::kTime) {
        return wrongKind("times");
    }
    value_->kind = Value::Kind::Time;
    value_->time = time;
    return KStatus();
}

KStatus KDataHandle::setKMatrix(const KMatrix& matrix) {
    if (KFailureInjection::shouldFail("KDataHandle::setKMatrix")) {
        return KFailureInjection::failure("KDataHandle::setKMatrix");
    }
    if (value_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null data handle");
    }
    if (attribute_->kind == Attribute::Kind::Matrix) {
        value_->kind = Value::Kind::Matrix;
        value_->matrix = attribute_->precision == KFnMatrixAttribute::kFloat
                             ? KFloatMatrix(matrix).asMatrix()
                             : matrix;
        return KStatus();
    }
    if ((attribute_->kind == Attribute::Kind::Typed ||
         attribute_->kind == Attribute::Kind::Generic) &&
        attribute_->acceptsData(KFnData::kMatrix)) {
        value_->kind = Value::Kind::Data;
        value_->data = std::make_shared<kova::detail::MatrixData>(matrix);
        return KStatus();
    }
    return wrongKind("matrices");
}

KStatus KDataHandle::setKFloatMatrix(const KFloatMatrix& matrix) {
    return setKMatrix(matrix.asMatrix());
}

void KDataHandle::setClean() {
    if (node_ != nullptr && attribute_ != nullptr) {
        std::lock_guard lock(node_->mutex);
        kova::detail::markClean(*node_, *attribute_);
    }
}
