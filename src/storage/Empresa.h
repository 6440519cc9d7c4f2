#pragma once

#include <QStringList>

namespace nfce {

// The issuer's identity as the company record holds it, read once at start-up.
struct Empresa {
    QString Cnpj;
    QString Nome;
    QString Serie; // zero-padded to three digits; never cut
    QString CodMunicipio;
    QString Ie;
    QString Endereco;
    QString Numero;
    QString Complemento;
    QString Bairro;
    QString Cidade;
    QString Uf;
    QString Telefone;
    QString Cep;
};

// Reads the record's keys from one reading of the file; a missing key is "", a missing series
// "000".
// Errors of the reader (53, 5) go to the caller.
Empresa CarregaEmpresa(const QString& pastaPrograma);

// Raises ErroArgumentoInvalido (5) with one line naming Empresa.Bin and what is wrong when the
// record cannot make documents: cut short (its last line unended), a CNPJ that is not 14
// digits with valid check digits, or NOME, SERIE, CODMUNICIPIO (7 digits), ENDERECO, NUMERO,
// BAIRRO, CIDADE, UF (a state's letters) or CEP (8 digits) missing or malformed. A missing or
// damaged file raises as CarregaEmpresa does.
void VerificaEmpresa(const QString& pastaPrograma);

// Writes "Empresa.Bin" from plain KEY=value lines, scrambled, in one piece (Publica): a reader
// never sees half a record. Blank lines are left out. Errors: 5 (a character that cannot be
// stored), and Publica's (61 disk full, 76 no such folder, 75 otherwise).
void GravaRegistroEmpresa(const QString& pastaPrograma, const QStringList& linhas);
// The record's lines in plain text, read as the server reads them (error 53 when missing, 5
// when a line is damaged).
QStringList DecifraRegistroEmpresa(const QString& pastaPrograma);

} // namespace nfce
