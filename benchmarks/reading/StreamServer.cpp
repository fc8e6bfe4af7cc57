// Serves one stream of a given length on 127.0.0.1 as fast as it is taken, each listener on a thread of its
// own:
//   orvel-bench-stream-server SOUND TYPE MEGABYTES
// Prints its port. The sound file is repeated; with "Icy-Metadata: 1" in the request a title goes in every
// 16,000 bytes. The body is laid out once, in memory, so that sending costs a copy to the socket and nothing
// else. Ends with its input.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace {

constexpr std::size_t interval = 16000;

std::string titleBlock(int number)
{
    std::string text = "StreamTitle='Artist - Title " + std::to_string(number) + "';";
    const std::size_t blocks = (text.size() + 15) / 16;
    text.resize(blocks * 16, '\0');
    return static_cast<char>(blocks) + text;
}

// `size` bytes of the sound, over and over, with a title every four blocks and empty blocks between them.
std::string body(const std::string &sound, std::size_t size, bool titles)
{
    std::string made;
    made.reserve(size + size / 200);
    std::size_t sent = 0;
    for (int block = 0; sent < size; ++block) {
        for (std::size_t left = std::min(interval, size - sent); left > 0;) {
            const std::size_t place = sent % sound.size();
            const std::size_t run = std::min(left, sound.size() - place);
            made.append(sound, place, run);
            sent += run;
            left -= run;
        }
        if (titles)
            made += block % 4 == 0 ? titleBlock(block) : std::string(1, '\0');
    }
    return made;
}

bool sendAll(int socket, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t sent = send(socket, bytes, std::min<std::size_t>(size, 1 << 20), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return true;
}

struct Stream
{
    std::string type;
    std::string plain;
    std::string withTitles;

    void serve(int socket) const
    {
        std::string request;
        char bytes[4096];
        while (request.find("\r\n\r\n") == std::string::npos && request.size() < 65536) {
            const ssize_t got = recv(socket, bytes, sizeof bytes, 0);
            if (got <= 0)
                break;
            request.append(bytes, static_cast<std::size_t>(got));
        }
        std::transform(request.begin(), request.end(), request.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const bool titles = request.find("icy-metadata: 1") != std::string::npos ||
                            request.find("icy-metadata:1") != std::string::npos;
        std::string head = "HTTP/1.0 200 OK\r\nContent-Type: " + type + "\r\nicy-name: Benchmark\r\n";
        if (titles)
            head += "icy-metaint: " + std::to_string(interval) + "\r\n";
        head += "\r\n";
        const std::string &content = titles ? withTitles : plain;
        if (sendAll(socket, head.data(), head.size()))
            sendAll(socket, content.data(), content.size());
        shutdown(socket, SHUT_WR);
        while (recv(socket, bytes, sizeof bytes, 0) > 0) {
        }
        close(socket);
    }
};

} // namespace

int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN);
    std::ifstream file(argc == 4 ? argv[1] : "", std::ios::binary);
    const std::string sound{std::istreambuf_iterator<char>(file), {}};
    if (sound.empty()) {
        std::fprintf(stderr, "usage: orvel-bench-stream-server SOUND TYPE MEGABYTES\n");
        return 2;
    }
    const std::size_t size = std::strtoul(argv[3], nullptr, 10) * 1'000'000;
    static const Stream stream{argv[2], body(sound, size, false), body(sound, size, true)};

    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr *>(&address), length) != 0 || listen(listener, 16) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr *>(&address), &length) != 0) {
        std::perror("orvel-bench-stream-server");
        return 1;
    }
    std::printf("%d\n", ntohs(address.sin_port));
    std::fflush(stdout);
    std::thread([listener] {
        while (true) {
            const int socket = accept(listener, nullptr, nullptr);
            if (socket >= 0)
                std::thread([socket] { stream.serve(socket); }).detach();
        }
    }).detach();
    while (std::getchar() != EOF) {
    }
    std::_Exit(0);
}
