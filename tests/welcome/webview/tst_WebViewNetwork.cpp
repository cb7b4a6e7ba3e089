// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"
#include "tests/welcome/webview/HelpPages.h"
#include "welcome/webview/PageRules.h"

#include <QtTest>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// A port of this machine that notes when somebody comes.
class Listener
{
public:
    explicit Listener(int type)
        : m_type(type)
        , m_socket(socket(AF_INET, type | SOCK_NONBLOCK, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *place = reinterpret_cast<sockaddr *>(&address);
        socklen_t size = sizeof address;
        if (bind(m_socket, place, size) != 0 || getsockname(m_socket, place, &size) != 0 ||
            (type == SOCK_STREAM && listen(m_socket, 50) != 0))
            qFatal("no socket to listen at");
        m_port = ntohs(address.sin_port);
    }
    ~Listener() { close(m_socket); }
    Q_DISABLE_COPY(Listener)

    int port() const { return m_port; }

    bool wasReached() const
    {
        char byte = 0;
        return m_type == SOCK_STREAM ? accept(m_socket, nullptr, nullptr) >= 0
                                     : recv(m_socket, &byte, 1, 0) >= 0;
    }

private:
    const int m_type;
    const int m_socket;
    int m_port = 0;
};

bool canReach(const Listener &listener)
{
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(listener.port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool connected = connect(client, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    close(client);
    return connected && listener.wasReached();
}

} // namespace

/// Pages are local files and reach nothing else.
class tst_WebViewNetwork : public QObject
{
    Q_OBJECT

private slots:
    void theListenerNoticesWhoComes();
    void noPageReachesTheNetwork_data();
    void noPageReachesTheNetwork();
    void noPageAsksForPeers();
    void theClosingScriptTakesWhatNoRequestShows();
    void filesOfTheFolderAreThere();
    void filesOutsideOfTheFolderAreNot_data();
    void filesOutsideOfTheFolderAreNot();
    void scriptsDoNotReadFilesOutsideOfTheFolder_data();
    void scriptsDoNotReadFilesOutsideOfTheFolder();
    void theEnvironmentIsLeftAsItWas();
};

void tst_WebViewNetwork::theListenerNoticesWhoComes()
{
    const Listener server(SOCK_STREAM);
    QVERIFY(!server.wasReached());
    QVERIFY(canReach(server));
}

void tst_WebViewNetwork::noPageReachesTheNetwork_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto script = [](const QByteArray &text) -> QByteArray { return "<script>" + text + "</script>"; };
    QTest::newRow("picture") << QByteArray("<img src='http://HOST/a.png'>");
    QTest::newRow("script") << QByteArray("<script src='http://HOST/a.js'></script>");
    QTest::newRow("style sheet") << QByteArray("<link rel=stylesheet href='http://HOST/a.css'>");
    QTest::newRow("font") << QByteArray("<style>@font-face{font-family:f;src:url(http://HOST/f)}"
                                        "p{font-family:f}</style><p>text</p>");
    QTest::newRow("frame") << QByteArray("<iframe src='http://HOST/'></iframe>");
    QTest::newRow("object") << QByteArray("<object data='http://HOST/'></object>");
    QTest::newRow("embedded") << QByteArray("<embed src='http://HOST/'>");
    QTest::newRow("video") << QByteArray("<video autoplay src='http://HOST/'></video>");
    QTest::newRow("prefetch") << QByteArray("<link rel=prefetch href='http://HOST/'>");
    QTest::newRow("preconnect") << QByteArray("<link rel=preconnect href='http://HOST/'>");
    QTest::newRow("icon") << QByteArray("<link rel=icon href='http://HOST/icon.png'>");
    QTest::newRow("refresh") << QByteArray("<meta http-equiv=refresh content='0;url=http://HOST/'>");
    QTest::newRow("fetch") << script("fetch('http://HOST/', { mode: 'no-cors' })");
    QTest::newRow("request") << script("r = new XMLHttpRequest; r.open('GET', 'http://HOST/'); r.send()");
    QTest::newRow("beacon") << script("navigator.sendBeacon('http://HOST/', 'x')");
    QTest::newRow("events") << script("new EventSource('http://HOST/')");
    QTest::newRow("socket") << script("new WebSocket('ws://HOST/')");
    QTest::newRow("location") << script("setTimeout(() => location = 'http://HOST/', 50)");
    QTest::newRow("form") << QByteArray("<form id=f action='http://HOST/' method=post></form>"
                                        "<script>setTimeout(() => f.submit(), 50)</script>");
    QTest::newRow("window") << script("open('http://HOST/')");
    QTest::newRow("worker") << script("new Worker(URL.createObjectURL(new Blob([\"fetch('http://HOST/', "
                                      "{ mode: 'no-cors' })\"])))");
    QTest::newRow("frame in data") << QByteArray(
        "<iframe src='data:text/html,<img src=http://HOST/>'></iframe>");
    QTest::newRow("by name") << QByteArray("<img src='http://localhost:PORT/a.png'>");
    QTest::newRow("socket by name") << script("new WebSocket('ws://localhost:PORT/')");
}

void tst_WebViewNetwork::noPageReachesTheNetwork()
{
    QFETCH(QByteArray, body);
    const Listener server(SOCK_STREAM);
    const QByteArray port = QByteArray::number(server.port());
    HelpPages pages;
    pages.open(body.replace("HOST", QByteArray("127.0.0.1:" + port)).replace("PORT", port));
    QTest::qWait(500);
    QVERIFY(!server.wasReached());
    QVERIFY(pages.opened.isEmpty());
    QCOMPARE(pages.in(QStringLiteral("location.protocol")), QStringLiteral("file:"));
}

void tst_WebViewNetwork::noPageAsksForPeers()
{
    const Listener udp(SOCK_DGRAM);
    const Listener tcp(SOCK_STREAM);
    HelpPages pages;
    pages.open("<script>c = new RTCPeerConnection({ iceServers: [{ urls: 'stun:127.0.0.1:" +
               QByteArray::number(udp.port()) +
               "' }, { urls: 'turn:127.0.0.1:" + QByteArray::number(tcp.port()) +
               "?transport=tcp', username: 'u', credential: 'c' }] }); c.createDataChannel('d');"
               "c.createOffer().then(o => c.setLocalDescription(o))</script>");
    QTest::qWait(2000);
    QVERIFY(!udp.wasReached());
    QVERIFY(!tcp.wasReached());
}

void tst_WebViewNetwork::theClosingScriptTakesWhatNoRequestShows()
{
    HelpPages pages;
    pages.open("");
    const QString left =
        QStringLiteral("['WebSocket', 'EventSource', 'RTCPeerConnection', 'Worker', 'SharedWorker']"
                       ".filter(name => typeof window[name] != 'undefined').length");
    QCOMPARE(pages.in(left), QStringLiteral("5"));
    pages.in(PageRules::closingScript());
    QCOMPARE(pages.in(left), QStringLiteral("0"));
    pages.in(QStringLiteral("window.WebSocket = 1; delete window.Worker"));
    QCOMPARE(pages.in(left), QStringLiteral("0"));
    QCOMPARE(pages.in(QStringLiteral("typeof external.DispatchFun")), QStringLiteral("function"));
}

void tst_WebViewNetwork::filesOfTheFolderAreThere()
{
    HelpPages pages;
    pages.add(QStringLiteral("sub/Frame.html"), "frame");
    pages.open("<iframe src='sub/Frame.html' onload='loaded = true'></iframe>"
               "<img src='data:image/svg+xml,<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"7\"/>'>");
    QTRY_COMPARE(pages.in(QStringLiteral("window.loaded")), QStringLiteral("true"));
    QTRY_COMPARE(pages.in(QStringLiteral("document.images[0].naturalWidth")), QStringLiteral("7"));
}

void tst_WebViewNetwork::filesOutsideOfTheFolderAreNot_data()
{
    QTest::addColumn<QByteArray>("place");
    QTest::newRow("above") << QByteArray("../outside.js");
    QTest::newRow("beside, with the same beginning") << QByteArray("../en-US-other/outside.js");
    QTest::newRow("by an encoded way") << QByteArray("sub/..%2f../outside.js");
}

void tst_WebViewNetwork::filesOutsideOfTheFolderAreNot()
{
    QFETCH(QByteArray, place);
    HelpPages pages;
    const QString script = pages.path(QString::fromLatin1(QByteArray(place).replace("%2f", "/")));
    QVERIFY(QDir().mkpath(pages.path(QStringLiteral("sub"))));
    QVERIFY(QDir().mkpath(QFileInfo(script).absolutePath()));
    QFile file(script);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("window.read = true") > 0);
    file.close();
    pages.open("<script src='" + place + "' onerror='window.refused = true'></script>");
    QTRY_COMPARE(pages.in(QStringLiteral("window.refused")), QStringLiteral("true"));
    QCOMPARE(pages.in(QStringLiteral("typeof window.read")), QStringLiteral("undefined"));
}

void tst_WebViewNetwork::scriptsDoNotReadFilesOutsideOfTheFolder_data()
{
    QTest::addColumn<QByteArray>("attempt");
    QTest::newRow("request") << QByteArray(
        "r = new XMLHttpRequest; r.onload = () => got = r.responseText;"
        "r.onloadend = () => tried = true; r.open('GET', 'FILE'); r.send()");
    QTest::newRow("fetch") << QByteArray("fetch('FILE').then(r => r.text()).then(t => got = t)"
                                         ".catch(() => 0).then(() => tried = true)");
    QTest::newRow("frame") << QByteArray(
        "f = document.createElement('iframe'); f.src = 'FILE';"
        "document.body.append(f); setTimeout(() => { tried = true; "
        "got = f.contentDocument && f.contentDocument.body.innerText }, 500)");
}

void tst_WebViewNetwork::scriptsDoNotReadFilesOutsideOfTheFolder()
{
    QFETCH(QByteArray, attempt);
    HelpPages pages;
    const QString secret = pages.folder.filePath(QStringLiteral("secret.txt"));
    TestFiles::write(secret, "secret");
    pages.open("<script>try { " + attempt.replace("FILE", QUrl::fromLocalFile(secret).toEncoded()) +
               " } catch (e) { tried = true }</script>");
    QTRY_COMPARE(pages.in(QStringLiteral("window.tried")), QStringLiteral("true"));
    QVERIFY2(!pages.in(QStringLiteral("'' + window.got")).contains(QLatin1String("secret")), "it was read");
}

void tst_WebViewNetwork::theEnvironmentIsLeftAsItWas()
{
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--some-flag");
    qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
    const HelpPages pages;
    QCOMPARE(qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"), QByteArray("--some-flag"));
    QVERIFY(!qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"));
}

QTEST_MAIN(tst_WebViewNetwork)
#include "tst_WebViewNetwork.moc"
