// The SQL Server backend up to the point where a server would answer: the
// connection text for FreeTDS, the installed driver, the login a server
// receives, and the login against loopback ports where no server answers.
#include "fallo.h"
#include "prueba.h"
#include "sqlserver.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <functional>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const long kConexion = FalloEjecucion::conexion(QString()).numero();

// The settings of a server on a loopback port, or on a remote host (port 0).
DatosSqlServer datos(quint16 puerto = 0, const QString& clave = QStringLiteral("clave"))
{
    DatosSqlServer d;
    d.servidor = puerto ? QStringLiteral("127.0.0.1") : QStringLiteral("10.1.2.3");
    if (puerto)
        d.puerto = puerto;
    d.clave = clave;
    return d;
}

// The same settings through the connection string of the start-up, the password in braces.
std::unique_ptr<Servidor> porCadena(quint16 puerto, const QString& clave, int segundos)
{
    return crearServidor(
        QStringLiteral("Provider=sqlserver;Server=127.0.0.1,%1;Database=RAMIL;User=TRUMIN;Password={%2};Timeout=%3")
            .arg(QString::number(puerto), clave, QString::number(segundos)));
}

// The text after the DRIVER entry, which depends on how the driver is installed.
QString sinControlador(const QString& texto)
{
    const qsizetype fin = texto.indexOf(QStringLiteral("};"));
    return fin < 0 ? texto : texto.mid(fin + 2);
}

// An opening that must fail: the failure and how long it took.
struct Intento {
    long numero = 0; // 0: it did not fail
    QString texto;
    qint64 milisegundos = 0;
};

Intento intentar(const std::function<void()>& abrir)
{
    Intento r;
    QElapsedTimer reloj;
    reloj.start();
    try {
        abrir();
    } catch (const FalloEjecucion& f) {
        r.numero = f.numero();
        r.texto = f.texto();
    }
    r.milisegundos = reloj.elapsed();
    return r;
}

// A TCP socket bound to a free loopback port, listening or not.
class Puerto {
public:
    explicit Puerto(bool escuchar)
    {
        fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in dir {};
        dir.sin_family = AF_INET;
        dir.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t largo = sizeof dir;
        if (fd_ >= 0 && ::bind(fd_, reinterpret_cast<sockaddr*>(&dir), sizeof dir) == 0 &&
            ::getsockname(fd_, reinterpret_cast<sockaddr*>(&dir), &largo) == 0 && (!escuchar || ::listen(fd_, 8) == 0))
            numero_ = ntohs(dir.sin_port);
    }
    ~Puerto()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }
    Puerto(const Puerto&) = delete;
    quint16 numero() const { return numero_; }
    int fd() const { return fd_; }

private:
    int fd_ = -1;
    quint16 numero_ = 0;
};

// Reads one TDS packet (8-byte header, then the body); empty on a closed or silent link.
QByteArray leerPaquete(int fd)
{
    auto leer = [fd](char* destino, int n) {
        for (int hecho = 0; hecho < n;) {
            pollfd p {fd, POLLIN, 0};
            if (::poll(&p, 1, 10000) <= 0)
                return false;
            const ssize_t r = ::recv(fd, destino + hecho, size_t(n - hecho), 0);
            if (r <= 0)
                return false;
            hecho += int(r);
        }
        return true;
    };
    char cabecera[8];
    if (!leer(cabecera, 8))
        return {};
    const int largo = (uchar(cabecera[2]) << 8) | uchar(cabecera[3]);
    QByteArray cuerpo(largo - 8, '\0');
    if (largo < 8 || !leer(cuerpo.data(), int(cuerpo.size())))
        return {};
    return cuerpo;
}

// A server that speaks just enough TDS to receive the login: it answers the
// pre-login without encryption, reads the login record and drops the link.
// Gives the user and the password as they arrived.
std::pair<QString, QString> recibirLogin(int escucha)
{
    pollfd p {escucha, POLLIN, 0};
    const int fd = ::poll(&p, 1, 10000) > 0 ? ::accept(escucha, nullptr, nullptr) : -1;
    if (fd < 0)
        return {};
    std::pair<QString, QString> r;
    if (!leerPaquete(fd).isEmpty()) {
        // Options: VERSION (6 bytes at 11), ENCRYPTION (1 byte at 17) = not supported.
        const unsigned char respuesta[] = {4,    1, 0,  26, 0, 0,    1,  0, 0x00, 0,    11, 0, 6,
                                           0x01, 0, 17, 0,  1, 0xFF, 15, 0, 0x07, 0xD0, 0,  0, 2};
        ::send(fd, respuesta, sizeof respuesta, MSG_NOSIGNAL);
        const QByteArray login = leerPaquete(fd);
        auto palabra = [&login](int en) { return int(uchar(login[en])) | (int(uchar(login[en + 1])) << 8); };
        auto texto = [&](int en, bool cifrado) {
            QByteArray bytes = login.mid(palabra(en), 2 * palabra(en + 2));
            if (cifrado) // each byte: nibbles swapped, then XOR 0xA5
                for (char& b : bytes) {
                    const uchar x = uchar(b) ^ 0xA5;
                    b = char(uchar((x << 4) | (x >> 4)));
                }
            return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()), bytes.size() / 2);
        };
        if (login.size() >= 48)
            r = {texto(40, false), texto(44, true)};
    }
    ::close(fd);
    return r;
}

} // namespace

class PruebaSqlServer : public QObject {
    Q_OBJECT

private slots:
    void textoDeConexion()
    {
        DatosSqlServer d = datos();
        QCOMPARE(sinControlador(ServidorSqlServer::textoOdbc(d)),
                 QStringLiteral("SERVER=10.1.2.3;PORT=1433;DATABASE=RAMIL;UID=TRUMIN;PWD={clave};TDS_Version=7.4;"
                                "ClientCharset=UTF-8"));
        // A password with the separators of the text survives in braces; the
        // port travels apart from the host; an empty password still stands as
        // an empty value; other values are braced only when they need it.
        d.clave = QStringLiteral("a;b}c{d=e }");
        d.puerto = 14330;
        QVERIFY(sinControlador(ServidorSqlServer::textoOdbc(d)).startsWith(QStringLiteral("SERVER=10.1.2.3;PORT=14330;")));
        QVERIFY(ServidorSqlServer::textoOdbc(d).contains(QStringLiteral(";PWD={a;b}c{d=e }};")));
        d.clave.clear();
        d.base = QStringLiteral("RAMIL;X");
        d.usuario = QStringLiteral(" TRUMIN");
        QVERIFY(ServidorSqlServer::textoOdbc(d).contains(QStringLiteral(";DATABASE={RAMIL;X};UID={ TRUMIN};PWD={};")));

        // The connection names the driver that unixODBC lists.
        QVERIFY2(QSqlDatabase::isDriverAvailable(QStringLiteral("QODBC")), qPrintable(QSqlDatabase::drivers().join(' ')));
        QVERIFY(ServidorSqlServer::textoOdbc(datos()).startsWith(QStringLiteral("DRIVER={FreeTDS};")));
    }

    // What the driver makes of the connection text: the user and the password
    // as a server receives them in the login record, the password given as
    // such and through the connection string of the start-up.
    void claveQueRecibeElServidor()
    {
        for (const char* clave : {"sencilla", "a;b=c", "x}y;z", "{p}}q", " con blancos ", "fin}"})
            for (bool cadena : {false, true}) {
                Puerto escucha(true);
                QVERIFY(escucha.numero() != 0);
                std::pair<QString, QString> recibidas;
                std::thread servidorTds([&] { recibidas = recibirLogin(escucha.fd()); });
                const std::unique_ptr<Servidor> servidor = cadena ? porCadena(escucha.numero(), QLatin1String(clave), 5)
                                                                  : std::make_unique<ServidorSqlServer>(
                                                                        datos(escucha.numero(), QLatin1String(clave)));
                const Intento r = intentar([&] { servidor->abrir(); });
                servidorTds.join();
                QCOMPARE(r.numero, kConexion); // the fake server hangs up after the login
                QCOMPARE(recibidas, std::pair(QStringLiteral("TRUMIN"), QString::fromLatin1(clave)));
            }

        // The one sequence that a braced value cannot carry is refused before any attempt.
        ServidorSqlServer servidor(datos(0, QStringLiteral("a};b")));
        const Intento r = intentar([&] { servidor.abrir(); });
        QCOMPARE(r.numero, kConexion);
        QVERIFY(r.milisegundos < 1000);
    }

    // A port where nothing listens refuses at once, with the driver's own text
    // (the login time-out is not waited for); a server that takes the
    // connection and never answers (a listening socket nobody reads: the
    // kernel completes the handshake) is waited for until the login time-out
    // and no longer. Either way, given its settings or the connection string,
    // the backend stays closed, runs nothing, and leaves no connection of Qt
    // behind; a refused one fails the same way a second time.
    void servidorQueNoAbre_data()
    {
        QTest::addColumn<bool>("escucha");
        QTest::newRow("puerto que no escucha") << false;
        QTest::newRow("servidor que no responde") << true;
    }
    void servidorQueNoAbre()
    {
        QFETCH(bool, escucha);
        Puerto puerto(escucha);
        QVERIFY(puerto.numero() != 0);
        const int conexionesAntes = QSqlDatabase::connectionNames().size();
        DatosSqlServer d = datos(puerto.numero());
        d.segundosConexion = escucha ? 2 : 10;
        std::unique_ptr<Servidor> formas[] = {std::make_unique<ServidorSqlServer>(d),
                                              porCadena(puerto.numero(), "clave", d.segundosConexion)};
        for (auto& servidor : formas) {
            QVERIFY(servidor && !servidor->esLocal());
            for (int vez = 0; vez < (escucha ? 1 : 2); ++vez) {
                const Intento r = intentar([&] { servidor->abrir(); });
                QCOMPARE(r.numero, kConexion);
                QVERIFY2(escucha || r.texto.contains(QStringLiteral("FreeTDS")), qPrintable(r.texto));
                QVERIFY2(escucha ? r.milisegundos >= 1000 && r.milisegundos < 7000 : r.milisegundos < 5000,
                         qPrintable(QString::number(r.milisegundos)));
                QVERIFY(!servidor->abierto());
            }
            QCOMPARE(intentar([&] { servidor->procedimiento(QStringLiteral("TRU_PARAMETROS"), {}); }).numero,
                     FalloEjecucion::objetoCerrado().numero());
            QVERIFY(intentar([&] { servidor->abrirConsulta(QStringLiteral("SELECT FECHA=GETDATE()")); }).numero != 0);
            QVERIFY(intentar([&] { servidor->ejecutar(QStringLiteral(" UPDATE proveedor SET regalo = 0")); }).numero != 0);
            servidor.reset();
        }
        QCOMPARE(QSqlDatabase::connectionNames().size(), conexionesAntes);
    }
};

REGISTRAR_PRUEBA(PruebaSqlServer);

#include "tst_sqlserver.moc"
