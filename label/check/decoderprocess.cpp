// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/decoderprocess.h"

#include "label/check/codedecoder.h"

#include <poll.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/// An answer takes a hundredth of a second, on slow machines with large pictures a few tenths.
constexpr int longestAnswer = 20'000; // milliseconds
constexpr int socketOfChild = 3;

/// What comes before the pixels of a picture and the names of the formats.
struct Question
{
    qint32 width = 0;
    qint32 height = 0;
    qint32 formats = 0; ///< their bytes
};

/// What comes before the bytes of both texts.
struct Answer
{
    bool isRead = false;
    qint32 text = 0; ///< the bytes
    qint32 guess = 0;
};

bool sendAll(int socket, const void *data, std::size_t size)
{
    const auto *bytes = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t sent = send(socket, bytes, size, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= std::size_t(sent);
    }
    return true;
}

/// Waits for as long as it takes if milliseconds is negative.
bool receiveAll(int socket, void *data, std::size_t size, int milliseconds)
{
    auto *bytes = static_cast<char *>(data);
    while (size > 0) {
        pollfd waiting { socket, POLLIN, 0 };
        const int ready = poll(&waiting, 1, milliseconds);
        if (ready < 0 && errno == EINTR)
            continue;
        const ssize_t received = ready > 0 ? recv(socket, bytes, size, 0) : 0;
        if (received < 0 && errno == EINTR)
            continue;
        if (received <= 0)
            return false;
        bytes += received;
        size -= std::size_t(received);
    }
    return true;
}

/// Answers the next question. False when there is none.
bool answerNext()
{
    Question question;
    if (!receiveAll(socketOfChild, &question, sizeof(question), -1))
        return false;
    std::string formats(std::size_t(question.formats), '\0');
    std::vector<std::uint8_t> pixels(std::size_t(question.width) * std::size_t(question.height));
    if (!receiveAll(socketOfChild, formats.data(), formats.size(), -1)
        || !receiveAll(socketOfChild, pixels.data(), pixels.size(), -1))
        return false;
    const CodeDecoder::Picture picture { pixels.data(), question.width, question.height };
    const std::optional<CodeDecoder::Reading> read = CodeDecoder::read(picture, formats);
    const CodeDecoder::Reading reading = read.value_or(CodeDecoder::Reading());
    const Answer answer { read.has_value(), qint32(reading.text.size()), qint32(reading.guess.size()) };
    return sendAll(socketOfChild, &answer, sizeof(answer))
        && sendAll(socketOfChild, reading.text.data(), reading.text.size())
        && sendAll(socketOfChild, reading.guess.data(), reading.guess.size());
}

/// All that the child has of this process but memory and the socket goes.
void detachChild(int socket)
{
    const int nothing = open("/dev/null", O_RDWR);
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        dup2(nothing, stream);
    dup2(socket, socketOfChild);
    close_range(socketOfChild + 1, UINT_MAX, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // An interrupted program ends its work first, and then the child.
    for (const int signal : { SIGINT, SIGTERM, SIGHUP })
        std::signal(signal, SIG_IGN);
    std::signal(SIGABRT, SIG_DFL);
    const rlimit none { 0, 0 };
    setrlimit(RLIMIT_CORE, &none);
}

[[noreturn]] void runChild(int socket)
{
    detachChild(socket);
    while (answerNext()) { }
    _exit(0); // nothing of this process is the child's to clean up
}

} // namespace

DecoderProcess::~DecoderProcess()
{
    stop();
}

bool DecoderProcess::start()
{
    std::array<int, 2> ends {};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return false;
    m_process = fork();
    if (m_process == 0)
        runChild(ends[1]);
    close(ends[1]);
    if (m_process > 0)
        m_socket = ends[0];
    else
        close(ends[0]);
    return m_process > 0;
}

void DecoderProcess::stop()
{
    if (m_socket < 0)
        return;
    close(m_socket);
    m_socket = -1;
    kill(m_process, SIGKILL);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) { }
}

bool DecoderProcess::sendQuestion(const QImage &picture, const QByteArray &formats) const
{
    const Question question { picture.width(), picture.height(), qint32(formats.size()) };
    bool isSent = sendAll(m_socket, &question, sizeof(question))
        && sendAll(m_socket, formats.constData(), std::size_t(formats.size()));
    for (int y = 0; isSent && y < picture.height(); ++y)
        isSent = sendAll(m_socket, picture.constScanLine(y), std::size_t(picture.width()));
    return isSent;
}

std::optional<QString> DecoderProcess::receiveText(qint32 size) const
{
    QByteArray text(size, '\0');
    return receiveAll(m_socket, text.data(), std::size_t(size), longestAnswer)
        ? std::optional(QString::fromUtf8(text))
        : std::nullopt;
}

std::optional<QStringList> DecoderProcess::answer() const
{
    Answer answer;
    if (!receiveAll(m_socket, &answer, sizeof(answer), longestAnswer))
        return {};
    const std::optional<QString> text = receiveText(answer.text);
    const std::optional<QString> guess = text ? receiveText(answer.guess) : std::nullopt;
    if (!guess)
        return {};
    if (!answer.isRead)
        return QStringList();
    return *guess == *text ? QStringList { *text } : QStringList { *text, *guess };
}

QStringList DecoderProcess::read(const QImage &picture, const QByteArray &formats)
{
    if (m_socket < 0 && !start())
        return {};
    const std::optional<QStringList> texts = sendQuestion(picture, formats) ? answer() : std::nullopt;
    if (!texts)
        stop(); // the next one finds another
    return texts.value_or(QStringList());
}
