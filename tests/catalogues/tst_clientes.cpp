// The client catalogue: filter, search, jumps, add and change, and the
// photographs shown on a click and stored from a picture file.
#include "por_menu.h"
#include "clientes.h"
#include "escribir.h"
#include "foto.h"
#include "imagenes.h"
#include "prueba.h"
#include "sesion.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScopeGuard>
#include <QTemporaryDir>

namespace {

using C = Clientes;

int cuenta(const BaseTemporal& base, const QString& sql) { return base.valor(sql).toInt(); }

void clicEnFila(Clientes* p, int fila)
{
    p->GRID->setBookmark(fila);
    emit p->GRID->Click();
}

// The format and size of picture bytes, as they stand, a turn noted in them left aside.
QString formatoYMedida(const QByteArray& bytes)
{
    QBuffer b;
    b.setData(bytes);
    b.open(QIODevice::ReadOnly);
    QImageReader lector(&b);
    lector.setAutoTransform(false);
    const QSize medida = lector.size();
    return QStringLiteral("%1 %2x%3").arg(QString::fromLatin1(lector.format())).arg(medida.width()).arg(medida.height());
}

void escribirArchivo(const QString& ruta, const QByteArray& bytes)
{
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

QByteArray bytesDe(const QImage& imagen, const char* formato)
{
    QByteArray bytes;
    QBuffer b(&bytes);
    b.open(QIODevice::WriteOnly);
    imagen.save(&b, formato, 95);
    return bytes;
}

} // namespace

class PruebaClientes : public QObject {
    Q_OBJECT
private slots:
    void filtro_busqueda_y_saltos()
    {
        SesionDePrueba s;
        auto* p = abrirPorMenu<Clientes>(s, "TAB_CLIENTES", "Clientes");
        QVERIFY(p);
        const int todos = cuenta(s.base, QStringLiteral("select count(*) from clientes"));
        QCOMPARE(p->Text1[C::txtFilas]->text(), QString::number(todos));
        QCOMPARE(p->List1->item(0)->text(), QStringLiteral("00 - TODOS"));
        QCOMPARE(p->List1->count(),
                 1 + cuenta(s.base, QStringLiteral("select count(*) from servicios where C_SERVIcio between 1 and 100")));
        QCOMPARE(p->List1->item(8)->text(), QStringLiteral("09 - PAYPAL")); // code 8 is a gap

        // The filter, chosen with the arrow keys, waits for CONSULTAR (Space on it).
        p->List1->setFocus();
        QTest::keyClick(p->List1, Qt::Key_Down);
        QTest::keyClick(p->List1, Qt::Key_Down);
        QCOMPARE(p->Servicio_Filtro, int16_t(2));
        QCOMPARE(p->Celdas.UpperBound(1) + 1, todos);
        p->CONSULTAR->setFocus();
        QTest::keyClick(p->CONSULTAR, Qt::Key_Space);
        const int deZelle = cuenta(s.base,
                                   QStringLiteral("select count(distinct C_CLIENTE) from MOVIMIENTOS where tipo_servicio = 2"));
        QVERIFY(deZelle > 0 && deZelle < todos);
        QCOMPARE(p->N_Filas, int16_t(deZelle));

        // A search leaves the count and the last row of the full list.
        p->Text1[C::txtBusqueda]->setText(QStringLiteral(" perez le "));
        p->Busca->click();
        const int hallados = p->Celdas.UpperBound(1) + 1;
        QVERIFY(hallados > 0 && hallados < deZelle);
        QCOMPARE(p->Text1[C::txtFilas]->text(), QString::number(deZelle));
        QCOMPARE(p->focusWidget(), p->Text1[C::txtBusqueda]);
        p->Ultimo->click();
        QCOMPARE(p->GRID->Bookmark(), -1); // beyond the rows found
        p->Command1->click();
        QCOMPARE(p->GRID->Bookmark(), 0);

        // A head click sorts the rows by that column, as text.
        emit p->GRID->HeadClick(C::colDescripcion);
        for (int i = 1; i < hallados; ++i)
            QVERIFY(p->Celdas.Value(i - 1, C::colDescripcion).texto() <= p->Celdas.Value(i, C::colDescripcion).texto());

        // Away and back: the list, the grid and the count show all the clients again.
        s.abrir<Pantalla>(QStringLiteral("CONCEPTOS"));
        QCOMPARE(s.abrir<Clientes>(QStringLiteral("Clientes")), p);
        QCOMPARE(p->List1->currentItem()->text(), QStringLiteral("00 - TODOS"));
        QCOMPARE(p->Servicio_Filtro, int16_t(0));
        QCOMPARE(p->N_Filas, int16_t(todos));
        QCOMPARE(p->Text1[C::txtFilas]->text(), QString::number(todos));
    }

    void alta_y_cambios()
    {
        SesionDePrueba s;
        const QString antes = s.base.valor(QStringLiteral("select D_cliente from clientes where C_CLIENTE = 3"));
        s.base.sql(QStringLiteral(
            "CREATE TABLE llamadas (codigo INTEGER);"
            "CREATE TRIGGER anota AFTER UPDATE ON clientes BEGIN INSERT INTO llamadas VALUES (new.C_CLIENTE); END;"));
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        const int todos = p->N_Filas;

        p->INCLUIR->click();
        QVERIFY(p->Text1[C::rotCodigo]->isHidden() && p->Text1[C::txtCodigo]->isHidden());
        QVERIFY(!p->Text1[C::rotDescripcion]->isHidden() && !p->Text1[C::txtDescripcion]->isHidden() && !p->Procesar->isHidden());
        QCOMPARE(p->focusWidget(), p->Text1[C::txtDescripcion]);
        p->Text1[C::txtDescripcion]->setText(QStringLiteral("ELOY CASTRO"));
        p->Procesar->click();
        QCOMPARE(p->N_Filas, int16_t(todos + 1));
        QCOMPARE(p->GRID->Bookmark(), todos);
        QCOMPARE(p->Celdas.Value(todos, C::colDescripcion).texto(), QStringLiteral("ELOY CASTRO"));
        QCOMPARE(s.m->Nombre_Cliente(int16_t(todos + 1)), QStringLiteral("ELOY CASTRO"));
        QVERIFY(p->Procesar->isHidden());

        // Two columns of one row edited: one call, trimmed; the cache follows.
        escribirEnCelda(*p->GRID, 1, C::colDescripcion, QStringLiteral(" ANA MARIA SOTO "));
        escribirEnCelda(*p->GRID, 1, C::colRevisar, QStringLiteral(" 9999 "));
        escribirEnCelda(*p->GRID, 2, C::colRevisar, QStringLiteral("  ")); // blanks: an edit, sent empty
        p->MODIFICAR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select group_concat(codigo) from llamadas")), QStringLiteral("2,3"));
        QCOMPARE(s.base.valor(QStringLiteral("select D_cliente || '/' || Revisar from clientes where C_CLIENTE = 2")),
                 QStringLiteral("ANA MARIA SOTO/9999"));
        QCOMPARE(s.base.valor(QStringLiteral("select D_cliente from clientes where C_CLIENTE = 3")), antes);
        QCOMPARE(s.m->Nombre_Cliente(2), QStringLiteral("ANA MARIA SOTO"));
    }

    // The search for a photo starts in the user's pictures, or at home
    // without them. A phone's large photo is stored upright, within the
    // bound, as a JPEG a fraction of its file; a small picture keeps its
    // size; what was transparent turns white.
    void fotos_a_la_medida_de_las_pantallas()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        QDateTime ahora(QDate(2024, 1, 1), QTime(8, 0));
        s.m->reloj = [&] { return ahora = ahora.addSecs(1); };
        // Every place a photo is shown on this screen fits within the bound.
        for (const QLabel* l : {p->Imagen, p->Image1})
            QVERIFY(l->width() <= Foto::Lado_Maximo && l->height() <= Foto::Lado_Maximo);

        QTemporaryDir casa;
        const QByteArray home = qgetenv("HOME"), config = qgetenv("XDG_CONFIG_HOME");
        const auto devolver = qScopeGuard([&] {
            qputenv("HOME", home);
            config.isEmpty() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", config);
        });
        qputenv("HOME", casa.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", casa.filePath(QStringLiteral(".config")).toUtf8());
        QString ruta;
        QStringList carpetas;
        p->Dialogo_ShowOpen = [&] {
            carpetas << p->Dialogo_InitDir;
            return ruta;
        };
        const auto grabar = [&](const QByteArray& archivo) {
            escribirArchivo(ruta, archivo);
            p->FOTO->click();
            p->GRABAR_IMAGEN->click();
            return Foto::Lee(*s.m, QStringLiteral("0012"), false);
        };
        clicEnFila(p, 11); // client 12, with no photo yet
        QCOMPARE(p->Text1[C::txtCliente]->text(), QStringLiteral("0012"));

        // No pictures folder: home. Then the usual one, then the one the desktop names.
        ruta = casa.filePath(QStringLiteral("cara.png"));
        grabar(imagen("PNG", Qt::yellow));
        QVERIFY(QDir(casa.path()).mkdir(QStringLiteral("Pictures")));
        grabar(imagen("PNG", Qt::yellow));
        const QString imagenes = casa.filePath(QStringLiteral("Imágenes"));
        QVERIFY(QDir().mkpath(imagenes) && QDir().mkpath(casa.filePath(QStringLiteral(".config"))));
        escribirArchivo(casa.filePath(QStringLiteral(".config/user-dirs.dirs")),
                        QByteArrayLiteral("XDG_PICTURES_DIR=\"$HOME/Im\xc3\xa1genes\"\n"));
        grabar(imagen("PNG", Qt::yellow));
        QCOMPARE(carpetas, (QStringList {casa.path(), casa.filePath(QStringLiteral("Pictures")), imagenes}));

        // A phone's photo, taken sideways: wide in the file, with the turn noted.
        QImage tomada(4000, 3000, QImage::Format_RGB32);
        tomada.fill(Qt::red);
        QPainter(&tomada).fillRect(2000, 0, 2000, 3000, Qt::blue);
        QByteArray telefono = bytesDe(tomada, "JPEG");
        // As a phone notes it: an Exif block whose one entry, orientation 6, says "turn right".
        telefono.insert(2, QByteArray("\xff\xe1\x00\x22"
                                      "Exif\0\0"
                                      "MM\x00\x2a\x00\x00\x00\x08"
                                      "\x00\x01"
                                      "\x01\x12\x00\x03\x00\x00\x00\x01\x00\x06\x00\x00"
                                      "\x00\x00\x00\x00",
                                      36));
        QCOMPARE(formatoYMedida(telefono), QStringLiteral("jpeg 4000x3000"));
        ruta = imagenes + QStringLiteral("/IMG_0001.jpg");
        const QByteArray grande = grabar(telefono);
        const QSize dentro = QSize(3000, 4000).scaled(Foto::Lado_Maximo, Foto::Lado_Maximo, Qt::KeepAspectRatio);
        QCOMPARE(formatoYMedida(grande), QStringLiteral("jpeg %1x%2").arg(dentro.width()).arg(dentro.height()));
        QVERIFY2(grande.size() * 10 < telefono.size(), qPrintable(QString::number(grande.size())));
        // Upright: what was left in the file stands on top.
        const QImage guardada = QImage::fromData(grande);
        QVERIFY(qRed(guardada.pixel(dentro.width() / 2, 10)) > 200 && qBlue(guardada.pixel(dentro.width() / 2, 10)) < 60);
        QVERIFY(qBlue(guardada.pixel(dentro.width() / 2, dentro.height() - 10)) > 200);
        // The client's click shows what was stored.
        clicEnFila(p, 11);
        QCOMPARE(imagenDe(p->Image1), comoSeMuestra(grande, p->Image1));

        // Small pictures are not enlarged; a transparent one is stored on white.
        QCOMPARE(formatoYMedida(grabar(imagen("PNG", Qt::green, QSize(120, 90)))), QStringLiteral("jpeg 120x90"));
        QImage transparente(50, 70, QImage::Format_ARGB32);
        transparente.fill(Qt::transparent);
        const QByteArray blanca = grabar(bytesDe(transparente, "PNG"));
        QCOMPARE(formatoYMedida(blanca), QStringLiteral("jpeg 50x70"));
        QVERIFY(qGray(QImage::fromData(blanca).pixel(25, 35)) > 245);
    }

    void fotos_desde_memoria_y_archivo()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("INSERT INTO clientes (C_CLIENTE, D_cliente) VALUES (10000, 'ZULAY ÑAÑEZ')"));
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        // A clock that moves a second at each look, noting whether the message is in view.
        QDateTime ahora(QDate(2024, 1, 1), QTime(8, 0));
        int segundos = 0;
        QStringList vistos;
        s.m->reloj = [&] {
            ++segundos;
            if (p->Text2->isVisible() && !vistos.contains(p->Text2->text()))
                vistos << p->Text2->text();
            return ahora.addSecs(segundos);
        };
        const QByteArray sinFoto = Foto::Lee(*s.m, QStringLiteral("0000"), false);
        const QByteArray revision = Foto::Lee(*s.m, QString(), true);

        // Nothing clicked yet: nothing to pick, nothing to store.
        p->FOTO->click();
        p->GRABAR_IMAGEN->click();
        QCOMPARE(s.mensajes.size(), 2);
        QCOMPARE(s.mensajes[0].texto, QStringLiteral("No selecciono ningun Cliente"));
        QCOMPARE(s.mensajes[1].texto, QStringLiteral("----- ESA FOTO YA ESTA GRABADA -------"));
        QCOMPARE(s.mensajes[1].estilo, 0);

        // A client under review shows the warning picture, with no message.
        const int enRevision = 136; // client 137
        QCOMPARE(p->Celdas.Value(enRevision, C::colRevisar).texto(), QStringLiteral("9999"));
        clicEnFila(p, enRevision);
        QCOMPARE(p->Text1[C::txtCliente]->text(), QStringLiteral("0137"));
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(revision, p->Imagen));
        QVERIFY(vistos.isEmpty());

        // Without a photo: picture 0 and the notice held two seconds.
        clicEnFila(p, 11);
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(sinFoto, p->Imagen));
        QCOMPARE(vistos, QStringList {"Cliente no tiene Foto"});
        QVERIFY(segundos >= 3);
        QVERIFY(p->Text2->isHidden());

        // A client of five digits, found without capitals or accents; a JPEG
        // chosen by a path of 80 characters is shown, then stored.
        p->Text1[C::txtBusqueda]->setText(QStringLiteral("zulay nañez"));
        p->Busca->click();
        QCOMPARE(p->Celdas.UpperBound(1), 0);
        QCOMPARE(p->Celdas.Value(0, C::colDescripcion).texto(), QStringLiteral("ZULAY ÑAÑEZ"));
        clicEnFila(p, 0);
        QCOMPARE(p->Text1[C::txtCliente]->text(), QStringLiteral("10000"));
        QString carpeta = s.base.carpeta() + QStringLiteral("/fotos de clientes/");
        carpeta += QString(80 - carpeta.size() - 9, QLatin1Char('x'));
        QVERIFY(QDir().mkpath(carpeta));
        const QString ruta = carpeta + QStringLiteral("/cara.jpg");
        QCOMPARE(ruta.size(), 80);
        const QByteArray jpeg = imagen("JPEG", Qt::blue);
        escribirArchivo(ruta, jpeg);
        p->Dialogo_ShowOpen = [&] { return ruta; };
        p->FOTO->click();
        QCOMPARE(p->Text1[C::txtArchivo]->text(), ruta);
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(jpeg, p->Imagen));
        QVERIFY(s.base.valor(QStringLiteral("select count(*) from fotos where cliente = 10000")) == QStringLiteral("0"));
        vistos.clear();
        p->GRABAR_IMAGEN->click();
        QCOMPARE(vistos, QStringList {"Foto Grabada"});
        QCOMPARE(formatoYMedida(Foto::Lee(*s.m, QStringLiteral("10000"), false)), QStringLiteral("jpeg 30x40"));
        QCOMPARE(p->Text1[C::txtArchivo]->text(), ruta); // a second click would store it again

        // A PNG replaces it; the click shows it and leaves nothing to store.
        const QByteArray azul = Foto::Lee(*s.m, QStringLiteral("10000"), false);
        escribirArchivo(ruta, imagen("PNG", Qt::yellow));
        p->GRABAR_IMAGEN->click();
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from fotos where cliente = 10000")), QStringLiteral("1"));
        const QByteArray amarilla = Foto::Lee(*s.m, QStringLiteral("10000"), false);
        QVERIFY(amarilla != azul);
        clicEnFila(p, 0);
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(amarilla, p->Imagen));
        QCOMPARE(imagenDe(p->Image1), comoSeMuestra(amarilla, p->Image1));
        QCOMPARE(p->Text1[C::txtArchivo]->text(), QString());

        // A new load forgets the client: FOTO refuses again.
        p->CONSULTAR->click();
        s.mensajes.clear();
        p->FOTO->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("No selecciono ningun Cliente"));
    }
};

REGISTRAR_PRUEBA(PruebaClientes);
#include "tst_clientes.moc"
