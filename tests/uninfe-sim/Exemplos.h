#pragma once

#include <QByteArray>
#include <QString>

namespace uninfesim::teste {

inline const QByteArray kCnpj = "18123456000104";

// A sale as the server writes it: Windows-1252, CR LF, offline contingency (tpEmis 9).
// `icms` is the item's ICMS group line ("" for none); the item record is on line 10.
inline QByteArray TxtDaVenda(qint64 nNF, const QByteArray& icms = "N10d|0|102|") {
    const QByteArray numero = QByteArray::number(nNF).rightJustified(9, '0');
    QByteArray txt = "NOTAFISCAL|1\r\n"
                     "A|4.00|NFe\r\n"
                     "B|31||VENDA|65|001|" +
                     numero +
                     "|2026-11-15T10:20:30-03:00||1|1|3106200|4|9||1|1|1|1|0|0.00|"
                     "2026-11-15T10:20:30-03:00|SEM CONEXAO COM A INTERNET OU SEFAZ|\r\n"
                     "C|LOJA D'AVILA \"CENTRO\" LTDA||0012345670012||||1|\r\n"
                     "C02|" +
                     kCnpj +
                     "|\r\n"
                     "C05|RUA A|10||CENTRO|3106200|BELO HORIZONTE|MG|30110000|1058|BRASIL|"
                     "3132220000|\r\n"
                     "E|JOSE|9||||\r\n"
                     "E03|12345678909|\r\n"
                     "H|1||\r\n"
                     "I|000045|SEM GTIN|CAF\xc9 500G|09012100||0302100|||||5102|UN|2.000|10.00|"
                     "20.00|SEM GTIN|UN|2.000|10.00|0.00||0.00||1||||\r\n"
                     "M||\r\n"
                     "N|\r\n";
    if (!icms.isEmpty()) txt += icms + "\r\n";
    txt += "Q|\r\nQ04|08|\r\nS|\r\nS04|08|\r\nW|\r\n"
           "W02|0.00|0.00|0.00|0.00|0.00|20.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|20.00||\r\n"
           "X|9|\r\n"
           "YA|0|01|DINHEIRO|50.00|||||\r\n"
           "YA09|30.00|\r\n"
           "Z||TRIBUTOS (R$ 2,15) FONTE: IBPT(18,00%)     ;OP.:MARIA|Vend.: JOAO     |\r\n";
    return txt;
}

// Keys worked out by hand from the rules (cNF derived from nNF, modulo-11 check digit).
inline const QString kChave1234 = QStringLiteral("31261118123456000104650010000012349110961071");
inline const QString kChave1005 = QStringLiteral("31261118123456000104650010000010059351941092");

} // namespace uninfesim::teste
