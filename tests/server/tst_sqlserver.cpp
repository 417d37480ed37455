// The SQL Server backend up to the point where a server would answer: the
// connection text for FreeTDS, the installed drivers, the login a server
// receives, and the login time-out against loopback ports where no server answers.
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

DatosSqlServer datosDePrueba()
{
    DatosSqlServer d;
    d.servidor = QStringLiteral("10.1.2.3");
    d.clave = QStringLiteral("clave");
    return d;
}

// The text after the DRIVER entry, which depends on how the driver is installed.
QString sinControlador(const QString& texto)
{
    const qsizetype fin = texto.indexOf(QStringLiteral("};"));
    return fin < 0 ? texto : texto.mid(fin + 2);
}

// Runs an opening that must fail; gives the failure and how long it took.
struct Intento {
    bool fallo = false;
    long numero = 0;
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
        r.fallo = true;
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
        sockaddr_in dir{};
        dir.sin_family = AF_INET;
        dir.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t largo = sizeof dir;
        if (fd_ < 0 || ::bind(fd_, reinterpret_cast<sockaddr*>(&dir), sizeof dir) != 0
            || ::getsockname(fd_, reinterpret_cast<sockaddr*>(&dir), &largo) != 0
            || (escuchar && ::listen(fd_, 8) != 0))
            return;
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
            pollfd p{fd, POLLIN, 0};
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
// pre-login without encryption, reads the login record, decodes the user and the
// password as they arrived, and drops the link.
struct Credenciales {
    QString usuario;
    QString clave;
};

Credenciales recibirLogin(int escucha)
{
    Credenciales r;
    pollfd p{escucha, POLLIN, 0};
    if (::poll(&p, 1, 10000) <= 0)
        return r;
    const int fd = ::accept(escucha, nullptr, nullptr);
    if (fd < 0)
        return r;
    if (!leerPaquete(fd).isEmpty()) {
        // Options: VERSION (6 bytes at 11), ENCRYPTION (1 byte at 17) = not supported.
        const unsigned char respuesta[] = {4, 1, 0, 26, 0, 0, 1, 0, 0x00, 0, 11, 0, 6, 0x01, 0, 17, 0, 1, 0xFF,
                                           15, 0, 0x07, 0xD0, 0, 0, 2};
        ::send(fd, respuesta, sizeof respuesta, MSG_NOSIGNAL);
        const QByteArray login = leerPaquete(fd);
        auto palabra = [&login](int en) { return int(uchar(login[en])) | (int(uchar(login[en + 1])) << 8); };
        auto texto = [&](int en, bool cifrado) {
            const int desde = palabra(en);
            const int caracteres = palabra(en + 2);
            QByteArray bytes = login.mid(desde, 2 * caracteres);
            if (cifrado) // each byte: nibbles swapped, then XOR 0xA5
                for (char& b : bytes) {
                    const uchar x = uchar(b) ^ 0xA5;
                    b = char(uchar((x << 4) | (x >> 4)));
                }
            return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()), bytes.size() / 2);
        };
        if (login.size() >= 48) {
            r.usuario = texto(40, false);
            r.clave = texto(44, true);
        }
    }
    ::close(fd);
    return r;
}

const long numeroConexion = FalloEjecucion::conexion(QString()).numero();

} // namespace

class PruebaSqlServer : public QObject {
    Q_OBJECT

private slots:
    void textoDeConexion()
    {
        DatosSqlServer d = datosDePrueba();
        QCOMPARE(sinControlador(ServidorSqlServer::textoOdbc(d)),
                 QStringLiteral("SERVER=10.1.2.3;PORT=1433;DATABASE=RAMIL;UID=TRUMIN;PWD={clave};TDS_Version=7.4;"
                                "ClientCharset=UTF-8"));

        // A password with the separators of the text survives in braces; the
        // port travels apart from the host.
        d.clave = QStringLiteral("a;b}c{d=e }");
        d.servidor = QStringLiteral("sql.ejemplo.local");
        d.puerto = 14330;
        QCOMPARE(sinControlador(ServidorSqlServer::textoOdbc(d)),
                 QStringLiteral("SERVER=sql.ejemplo.local;PORT=14330;DATABASE=RAMIL;UID=TRUMIN;PWD={a;b}c{d=e }};"
                                "TDS_Version=7.4;ClientCharset=UTF-8"));

        // An empty password still stands as an empty value, not as a missing one.
        d.clave.clear();
        QVERIFY(ServidorSqlServer::textoOdbc(d).contains(QStringLiteral(";PWD={};")));

        // Other values are braced only when they need it.
        d.base = QStringLiteral("RAMIL;X");
        d.usuario = QStringLiteral(" TRUMIN");
        QVERIFY(ServidorSqlServer::textoOdbc(d).contains(QStringLiteral(";DATABASE={RAMIL;X};UID={ TRUMIN};")));

        // The connection names the driver that unixODBC lists.
        QVERIFY2(QSqlDatabase::isDriverAvailable(QStringLiteral("QODBC")), qPrintable(QSqlDatabase::drivers().join(' ')));
        QVERIFY(ServidorSqlServer::textoOdbc(datosDePrueba()).startsWith(QStringLiteral("DRIVER={FreeTDS};")));
    }

    void claveQueRecibeElServidor()
    {
        // What the driver makes of the connection text: the user and the password
        // as a server receives them in the login record.
        const QStringList claves = {QStringLiteral("sencilla"), QStringLiteral("a;b=c"), QStringLiteral("x}y;z"),
                                    QStringLiteral("{p}}q"), QStringLiteral(" con blancos "), QStringLiteral("fin}")};
        // The password given as such, and through the connection string of the start-up, in braces.
        const std::function<std::unique_ptr<Servidor>(quint16, const QString&)> formas[] = {
            [](quint16 puerto, const QString& clave) {
                DatosSqlServer d = datosDePrueba();
                d.servidor = QStringLiteral("127.0.0.1");
                d.puerto = puerto;
                d.clave = clave;
                d.segundosConexion = 5;
                return std::make_unique<ServidorSqlServer>(d);
            },
            [](quint16 puerto, const QString& clave) {
                return crearServidor(QStringLiteral("Provider=sqlserver;Server=127.0.0.1,%1;Database=RAMIL;User=TRUMIN;"
                                                    "Password={%2};Timeout=5")
                                         .arg(QString::number(puerto), clave));
            }};
        for (const QString& clave : claves)
            for (const auto& crear : formas) {
                Puerto escucha(true);
                QVERIFY(escucha.numero() != 0);
                Credenciales recibidas;
                std::thread servidorTds([&] { recibidas = recibirLogin(escucha.fd()); });
                const std::unique_ptr<Servidor> servidor = crear(escucha.numero(), clave);
                const Intento r = intentar([&] { servidor->abrir(); });
                servidorTds.join();
                QCOMPARE(r.numero, numeroConexion); // the fake server hangs up after the login
                QCOMPARE(recibidas.usuario, QStringLiteral("TRUMIN"));
                QCOMPARE(recibidas.clave, clave);
            }

        // The one sequence that a braced value cannot carry is refused before any attempt.
        DatosSqlServer d = datosDePrueba();
        d.clave = QStringLiteral("a};b");
        ServidorSqlServer servidor(d);
        const Intento r = intentar([&] { servidor.abrir(); });
        QCOMPARE(r.numero, numeroConexion);
        QVERIFY(r.milisegundos < 1000);
    }

    // A refused port fails at once, with the driver's own text; nothing runs
    // on the connection, a second attempt fails the same way, and no
    // connection of Qt is left behind.
    void puertoQueNoEscucha()
    {
        const quint16 puerto = Puerto(false).numero(); // taken free, then let go: nothing listens
        QVERIFY(puerto != 0);
        DatosSqlServer d = datosDePrueba();
        d.servidor = QStringLiteral("127.0.0.1");
        d.puerto = puerto;
        const int conexionesAntes = QSqlDatabase::connectionNames().size();

        ServidorSqlServer servidor(d);
        const Intento r = intentar([&] { servidor.abrir(); });
        QCOMPARE(r.numero, numeroConexion);
        // The text is the driver's own: it went through FreeTDS to the refused port.
        QVERIFY2(r.texto.contains(QStringLiteral("FreeTDS")), qPrintable(r.texto));
        // A refused port answers at once; the login time-out is not waited for.
        QVERIFY2(r.milisegundos < 5000, qPrintable(QString::number(r.milisegundos)));
        QVERIFY(!servidor.abierto());
        QCOMPARE(QSqlDatabase::connectionNames().size(), conexionesAntes);

        // Nothing runs on a connection that did not open.
        const Intento llamada = intentar([&] { servidor.procedimiento(QStringLiteral("TRU_PARAMETROS"), {}); });
        QCOMPARE(llamada.numero, FalloEjecucion::objetoCerrado().numero());
        QVERIFY(intentar([&] { servidor.abrirConsulta(QStringLiteral("SELECT FECHA=GETDATE()")); }).fallo);
        QVERIFY(intentar([&] { servidor.ejecutar(QStringLiteral(" UPDATE proveedor SET regalo = 0")); }).fallo);

        // A second attempt on the same object fails the same way.
        QCOMPARE(intentar([&] { servidor.abrir(); }).numero, numeroConexion);
        QCOMPARE(QSqlDatabase::connectionNames().size(), conexionesAntes);
    }

    // A listening socket completes the TCP handshake in the kernel even though
    // nobody accepts or reads: a server that takes the connection and never
    // answers. The login waits for its time-out and no longer.
    void servidorQueNoResponde()
    {
        Puerto mudo(true);
        QVERIFY(mudo.numero() != 0);
        DatosSqlServer d = datosDePrueba();
        d.servidor = QStringLiteral("127.0.0.1");
        d.puerto = mudo.numero();
        d.segundosConexion = 2;
        const int conexionesAntes = QSqlDatabase::connectionNames().size();
        // The same time-out given as such and through the connection string of the deployment settings.
        std::unique_ptr<Servidor> mudos[] = {
            std::make_unique<ServidorSqlServer>(d),
            crearServidor(QStringLiteral("Provider=sqlserver;Server=127.0.0.1,%1;Database=RAMIL;User=TRUMIN;"
                                         "Password=clave;Timeout=2")
                              .arg(mudo.numero()))};
        for (auto& servidor : mudos) {
            QVERIFY(servidor && !servidor->esLocal());
            const Intento r = intentar([&] { servidor->abrir(); });
            QCOMPARE(r.numero, numeroConexion);
            QVERIFY(!r.texto.isEmpty());
            // It waited for the server (so it got that far), and no longer than the
            // time-out with generous slack.
            QVERIFY2(r.milisegundos >= 1000 && r.milisegundos < 7000, qPrintable(QString::number(r.milisegundos)));
            QVERIFY(!servidor->abierto());
            servidor.reset();
        }
        QCOMPARE(QSqlDatabase::connectionNames().size(), conexionesAntes);
    }
};

REGISTRAR_PRUEBA(PruebaSqlServer);

#include "tst_sqlserver.moc"
