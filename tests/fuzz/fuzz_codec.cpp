#include <voro/PpsObject.h>

#include <pps/Text.h>

#include <cstdlib>

using namespace voro;

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

// Whatever bytes come: decoding ends, both decoders and the broker's check agree, and what was decoded survives
// encoding.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    bool ok = false;
    bool okWithFlags = false;
    const QVariantMap objects = PpsObject::decode(text, &ok);
    const auto flagged = PpsObject::decodeWithFlags(text, &okWithFlags);
    require(ok == okWithFlags && objects.size() <= flagged.size());

    pps::LineReader reader({text.constData(), size});
    pps::Line line;
    bool startsWithObject = true;
    for (bool isFirst = true; reader.next(line); isFirst = false) {
        startsWithObject = startsWithObject && (!isFirst || line.kind == pps::Line::Kind::Object);
    }
    require(ok == (!reader.failed() && startsWithObject));
    pps::Message().parse({text.constData(), size});

    for (auto object = objects.cbegin(); object != objects.cend(); ++object) {
        QVariantMap attributes = object->toMap();
        // A null is a value of JSON only.
        attributes.removeIf([](const auto &attribute) { return !attribute.value().isValid(); });
        bool isEncoded = false;
        const QByteArray again = PpsObject::encode(attributes, &isEncoded);
        require(isEncoded);
        bool isDecoded = false;
        const QVariantMap decoded = PpsObject::decode("@o\n" + again, &isDecoded);
        require(isDecoded && decoded.value(QStringLiteral("@o")).toMap().keys() == attributes.keys());
    }
    return 0;
}
