// Reads the titles of streams with curl's library and nothing else, one stream at a time, and prints them:
//   orvel-bench-bare-titles ADDRESS COUNT
// The streams are ADDRESS followed by 0, 1 and so on.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <curl/curl.h>
#include <string>

namespace {

// Passes over the sound, then keeps the first block; a refusal of more bytes ends the transfer.
struct Reading
{
    std::size_t interval = 0;
    std::size_t passed = 0;
    std::string block{};

    static std::size_t header(char *bytes, std::size_t, std::size_t count, void *reading)
    {
        const std::string line(bytes, count);
        if (line.starts_with("icy-metaint:"))
            static_cast<Reading *>(reading)->interval = std::strtoul(line.c_str() + 12, nullptr, 10);
        return count;
    }

    static std::size_t body(char *bytes, std::size_t, std::size_t count, void *reading)
    {
        auto &it = *static_cast<Reading *>(reading);
        const std::size_t sound = std::min(count, it.interval - it.passed);
        it.passed += sound;
        it.block.append(bytes + sound, count - sound);
        const bool isOver = !it.block.empty() && it.block.size() > std::size_t(it.block[0]) * 16;
        return isOver ? 0 : count;
    }

    std::string title() const
    {
        const std::size_t begin = block.find('\'') + 1;
        return block.substr(begin, block.find('\'', begin) - begin);
    }
};

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: orvel-bench-bare-titles ADDRESS COUNT\n");
        return 2;
    }
    curl_slist *const headers = curl_slist_append(nullptr, "Icy-MetaData: 1");
    CURL *const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Reading::header);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Reading::body);
    const int count = std::atoi(argv[2]);
    for (int i = 0; i < count; ++i) {
        Reading reading;
        curl_easy_setopt(easy, CURLOPT_URL, (argv[1] + std::to_string(i)).c_str());
        curl_easy_setopt(easy, CURLOPT_HEADERDATA, &reading);
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, &reading);
        curl_easy_perform(easy);
        std::printf("%s\n", reading.title().c_str());
    }
    curl_easy_cleanup(easy);
    curl_slist_free_all(headers);
}
