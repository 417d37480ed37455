#!/usr/bin/env bash
# Makes the SQL Server deployment script from database/sqlserver and parses it batch by batch with a full T-SQL
# grammar and checks that every procedure, function and trigger stands alone
# at the head of its batch. Needs the checker beside the repository
# (../shared/tools/tsql); without it there is nothing to run and the step is
# skipped. Installs the checker's packages (antlr4, a Java runtime) when missing.
set -euo pipefail
cd "$(dirname "$0")/.."
comprobador=../shared/tools/tsql/check-tsql.sh
if [[ ! -x "$comprobador" ]]; then
    echo "comprobar-tsql: $comprobador no está; el script de SQL Server no se comprueba"
    exit 0
fi
if ! command -v antlr4 >/dev/null || ! command -v javac >/dev/null; then
    como=""
    [[ $(id -u) -ne 0 ]] && como="sudo"
    $como apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $como apt-get install -y -qq antlr4 default-jdk-headless >/dev/null
fi
script=$(mktemp --suffix=.sql)
trap 'rm -f "$script"' EXIT
database/sqlserver/despliegue.sh > "$script"
"$comprobador" --quiet "$script"
