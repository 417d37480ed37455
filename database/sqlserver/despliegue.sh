#!/usr/bin/env bash
# Writes the administrator's deployment script for SQL Server to standard
# output, from the files of this folder: the tables and indexes, the rows the
# program reads without looking (with the two pictures of ../fotos), every
# function, the trigger and every procedure, each dropped when present and
# created again, then the rights of TRUMIN. Each procedure has a file of its
# own, named after it, beside its embedded twin in ../procedimientos.
#
#   database/sqlserver/despliegue.sh > despliegue.sql
set -euo pipefail
cd "$(dirname "$0")"

cat <<'FIN'
-- Control de Pagos: the database on SQL Server.
--
-- Creates the database RAMIL (if missing) with the tables of the system, the
-- procedures of the program with their helper functions, and the rows the program
-- reads without looking (parameters, the one-row dollar tables, the two USDT
-- reference prices, Zelle bank 0, the four wallets and the two pictures of
-- fotos), and gives the program's user TRUMIN its rights.
--
-- It can be run again, also over a database that holds the business's data:
-- tables and rows are kept, missing and older indexes are made, and every
-- procedure, function and the trigger is replaced. This is how a database is
-- brought up to a new version of the program.
--
-- Runs on SQL Server 2012 and later. As an administrator of the server, with sqlcmd:
--     sqlcmd -S servidor,1433 -U sa -P "clave" -i despliegue.sql
-- or with FreeTDS's tsql (each batch ends with "go"):
--     tsql -H servidor -p 1433 -U sa -P "clave" < despliegue.sql
--
-- Made from database/sqlserver/ by despliegue.sh: change those files, not this one.

FIN

cat esquema.sql
echo go
echo
cat datos.sql
echo go

# A picture as one binary literal on one line, stored when its row is missing.
foto() {
    local cliente=$1 archivo=$2
    echo "IF NOT EXISTS (SELECT 1 FROM dbo.fotos WHERE cliente = $cliente)"
    printf '    INSERT INTO dbo.fotos (cliente, img) VALUES (%s, 0x%s);\n' "$cliente" \
        "$(od -An -v -tx1 "$archivo" | tr -d ' \n' | tr 'a-f' 'A-F')"
    echo go
}
echo
echo "-- The pictures of fotos rows 0 (no photo) and 9999 (client under review)."
foto 0 ../fotos/sin_foto.png
foto 9999 ../fotos/revision.png

# Each object dropped when present, then created from its file, which must
# create the object it is named after.
objetos() {
    local carpeta=$1 clase=$2 tipo=$3 archivo nombre
    for archivo in $(LC_ALL=C ls "$carpeta"/*.sql); do
        nombre=$(basename "$archivo" .sql)
        if ! grep -q "^CREATE $clase dbo\.$nombre\b" "$archivo"; then
            echo "despliegue.sh: $archivo does not begin a CREATE $clase dbo.$nombre" >&2
            exit 1
        fi
        echo
        echo "IF OBJECT_ID(N'dbo.$nombre'$tipo) IS NOT NULL"
        echo "    DROP $clase dbo.$nombre;"
        echo go
        cat "$archivo"
        echo go
    done
}
objetos funciones FUNCTION ""          # scalar or table: no one type names both
objetos disparadores TRIGGER ", N'TR'"
objetos procedimientos PROCEDURE ", N'P'"

echo
cat permisos.sql
echo go
