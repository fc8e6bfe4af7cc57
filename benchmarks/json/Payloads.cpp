#include "benchmarks/json/Payloads.h"

#include <array>
#include <random>

namespace orvel::benchmark {

namespace {

constexpr std::mt19937::result_type seed = 20130612;

constexpr std::array words = {"la",      "radio",   "été",      "musique", "soirée",  "à",         "Paris",
                              "concert", "nouveau", "album",    "où",      "cœur",    "artiste",   "scène",
                              "Noël",    "places",  "à gagner", "invité",  "matinée", "l'antenne", "tube",
                              "en",      "direct",  "français", "groupe",  "dédicace"};

class Maker
{
public:
    explicit Maker(qsizetype size) : m_size(size) { m_text.reserve(size + 4096); }

    unsigned pick(unsigned below) { return static_cast<unsigned>(m_random() % below); }
    Maker &operator<<(const char *text)
    {
        m_text += text;
        return *this;
    }
    Maker &operator<<(qint64 number)
    {
        m_text += QByteArray::number(number);
        return *this;
    }
    void sentence(unsigned length)
    {
        for (unsigned i = 0; i < length; ++i)
            *this << (i > 0 ? " " : "") << words[pick(words.size())];
    }
    void digits(unsigned count)
    {
        for (unsigned i = 0; i < count; ++i)
            m_text += static_cast<char>('0' + pick(10));
    }
    bool isFull() const { return m_text.size() >= m_size; }
    QByteArray take() { return std::move(m_text); }

private:
    qsizetype m_size;
    QByteArray m_text;
    std::mt19937 m_random{seed};
};

void addArticle(Maker &make, qint64 id)
{
    make << R"({"id":")" << id << R"(","title":")";
    make.sentence(3 + make.pick(6));
    make << R"(","date":"2013-06-12 08:30:00","category_id":)" << 1 + make.pick(40);
    make << R"(,"duration":)" << make.pick(600) << "." << 1 + make.pick(98);
    make << R"(,"file":"\/upload\/medias\/)" << id << R"(\/photo-)" << make.pick(100000)
         << R"(.jpg","author":)";
    if (make.pick(4) == 0)
        make << "null";
    else
        make << R"({"id":)" << make.pick(300) << R"(,"name":"Zoé L\u00e9vy","staff":)"
             << (make.pick(2) ? "true" : "false") << "}";
    make << R"(,"tags":["pop","électro","2013"],"body":"<p class=\"intro\">)";
    make.sentence(25 + make.pick(40));
    make << R"(<\/p>\r\n<p>)";
    make.sentence(20 + make.pick(60));
    make << R"(<\/p>"})";
}

void addRow(Maker &make)
{
    make << R"({"t":)" << 1371025800 + qint64(make.pick(100000000)) << R"(,"v":[)";
    for (int i = 0; i < 16; ++i) {
        make << (i > 0 ? "," : "") << (make.pick(5) == 0 ? "-" : "");
        switch (make.pick(5)) {
        case 0:
            make << make.pick(1000);
            break;
        case 1:
            make << 1 + make.pick(9);
            make.digits(8);
            break;
        case 2:
            make << make.pick(100) << ".";
            make.digits(6);
            break;
        case 3:
            make << make.pick(10) << ".";
            make.digits(15);
            break;
        default:
            make << make.pick(10) << ".";
            make.digits(4);
            make << (make.pick(2) ? "e-" : "E+") << make.pick(20);
        }
    }
    make << "]}";
}

} // namespace

QByteArray apiPayload()
{
    Maker make(1'000'000);
    make << R"({"media_url":"http:\/\/media.orvel.example","content":[)";
    for (qint64 id = 1000; !make.isFull(); ++id) {
        if (id > 1000)
            make << ",";
        addArticle(make, id);
    }
    make << "]}";
    return make.take();
}

QByteArray numberPayload()
{
    Maker make(10'000'000);
    make << R"({"rows":[)";
    for (bool first = true; !make.isFull(); first = false) {
        if (!first)
            make << ",";
        addRow(make);
    }
    make << "]}";
    return make.take();
}

} // namespace orvel::benchmark
