#include "records/database/DatabaseValue.h"

namespace {

struct Viewer {
    ValueView operator()(NullValue) const { return {}; }
    ValueView operator()(qint64 value) const
    {
        return {.kind = ValueView::Kind::integer, .integer = value, .bytes = {}};
    }
    ValueView operator()(double value) const { return {.kind = ValueView::Kind::real, .real = value, .bytes = {}}; }
    ValueView operator()(const TextValue &value) const { return {.kind = ValueView::Kind::text, .bytes = value.utf8}; }
    ValueView operator()(const BlobValue &value) const { return {.kind = ValueView::Kind::blob, .bytes = value.bytes}; }
};

} // namespace

ValueView viewOf(const DatabaseValue &value)
{
    return std::visit(Viewer{}, value);
}

DatabaseValue ownedValue(const ValueView &view)
{
    switch (view.kind) {
    case ValueView::Kind::null:
        return NullValue{};
    case ValueView::Kind::integer:
        return view.integer;
    case ValueView::Kind::real:
        return view.real;
    case ValueView::Kind::text:
        return TextValue{view.bytes.toByteArray()};
    case ValueView::Kind::blob:
        return BlobValue{view.bytes.toByteArray()};
    }
    Q_UNREACHABLE();
}
