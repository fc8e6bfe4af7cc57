#include "benchmarks/json/Candidates.h"

#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"

#include <QJsonDocument>
#include <nlohmann/json.hpp>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace orvel::benchmark {

namespace {

Candidate ours()
{
    return {"Orvel, whole tree, exact decimals",
            [](const QByteArray &text) { return !JsonParser().objectWithString(text).isAbsent(); },
            [](const QByteArray &text) -> std::function<qsizetype()> {
                return [tree = JsonParser().objectWithString(text)] {
                    return JsonWriter().stringWithObject(tree).size();
                };
            }};
}

Candidate qt()
{
    return {"QJsonDocument, whole tree, doubles",
            [](const QByteArray &text) { return !QJsonDocument::fromJson(text).isNull(); },
            [](const QByteArray &text) -> std::function<qsizetype()> {
                return [tree = QJsonDocument::fromJson(text)] {
                    return tree.toJson(QJsonDocument::Compact).size();
                };
            }};
}

Candidate nlohmann()
{
    const auto read = [](const QByteArray &text) {
        return nlohmann::json::parse(text.begin(), text.end(), nullptr, false);
    };
    return {"nlohmann-json, whole tree, doubles",
            [read](const QByteArray &text) { return !read(text).is_discarded(); },
            [read](const QByteArray &text) -> std::function<qsizetype()> {
                return [tree = read(text)] { return qsizetype(tree.dump().size()); };
            }};
}

// No tree: what it reads is handed to a handler that drops it.
Candidate rapid()
{
    return {"RapidJSON, SAX reader, no tree, numbers as text",
            [](const QByteArray &text) {
                constexpr unsigned flags =
                    rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseValidateEncodingFlag;
                rapidjson::MemoryStream bytes(text.constData(), static_cast<std::size_t>(text.size()));
                rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
                rapidjson::BaseReaderHandler<> handler;
                return !rapidjson::Reader().Parse<flags>(stream, handler).IsError();
            },
            nullptr};
}

} // namespace

std::vector<Candidate> candidates() { return {ours(), qt(), nlohmann(), rapid()}; }

} // namespace orvel::benchmark
