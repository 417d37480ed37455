#pragma once
// Pictures for the photo tests: one of a single colour in a file format, and
// what a label of a given size shows for some bytes.
#include "foto.h"

#include <QBuffer>
#include <QImage>
#include <QLabel>

inline QByteArray imagen(const char* formato, Qt::GlobalColor color, QSize tamano = QSize(30, 40))
{
    QImage i(tamano, QImage::Format_RGB32);
    i.fill(color);
    QByteArray bytes;
    QBuffer b(&bytes);
    i.save(&b, formato);
    return bytes;
}

inline QImage imagenDe(const QLabel* l) { return l->pixmap().toImage(); }

inline QImage comoSeMuestra(const QByteArray& bytes, const QLabel* l)
{
    QLabel copia;
    copia.resize(l->size());
    Foto::Muestra(&copia, bytes);
    return imagenDe(&copia);
}
