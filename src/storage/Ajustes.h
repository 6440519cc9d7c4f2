#pragma once

#include <QString>

namespace nfce {

// The keys of "Config.ini", each declared once below with how its value is taken. Every read
// goes through LerConfig (first line that begins with the key, spaces trimmed, read again at
// every call), so an edit counts at the next read.

// Text; an empty value stands for `padrao`.
struct AjusteTexto {
    const char16_t* chave;
    const char16_t* padrao = u"";
};
// A switch: on only for exactly "SIM" (case-sensitive).
struct AjusteSim {
    const char16_t* chave;
};
// A number: Val of the value ("", "abc" and a missing key give 0).
struct AjusteNumero {
    const char16_t* chave;
};
// A whole number: Val cut toward zero; beyond 64 bits error 6; 0 stands for `padrao`.
struct AjusteInteiro {
    const char16_t* chave;
    qint64 padrao = 0;
};
// Whole seconds: Val cut toward zero; beyond the start-up's 16-bit count (rounded) error 6.
// 0 or less stands for the caller's own default.
struct AjusteSegundos {
    const char16_t* chave;
};

namespace ajustes {
// An empty text key with no default below means "none": no main database without
// BASEDADOS, no export database without SERVIDORBASEDADOS, no central service without
// CONTINGENCIAHOST. TIPOBANCO is MYSQL or SQLITE, in any case.
// clang-format off
inline constexpr AjusteSegundos Temp                {u"TEMP"};
inline constexpr AjusteNumero   TmpAmbNfce          {u"TMPAMBNFCE"};
inline constexpr AjusteInteiro  RegimeTrib          {u"REGIMETRIB",          1};
inline constexpr AjusteSim      EnvioXml            {u"ENVIOXML"};
inline constexpr AjusteSim      VendasOnline        {u"VENDASONLINE"};
inline constexpr AjusteSim      VendasOnlineSrv     {u"VENDASONLINESRV"};
inline constexpr AjusteSim      EstoqueFisico       {u"ESTOQUEFISICO"};
inline constexpr AjusteTexto    TipoBanco           {u"TIPOBANCO",           u"MYSQL"};
inline constexpr AjusteTexto    ServidorPrincipal   {u"SERVIDOR"};
inline constexpr AjusteTexto    BaseDados           {u"BASEDADOS"};
inline constexpr AjusteTexto    ServidorBase        {u"SERVIDORBASE"};
inline constexpr AjusteTexto    ServidorBaseDados   {u"SERVIDORBASEDADOS"};
inline constexpr AjusteTexto    ServidorUsuario     {u"SERVIDORUSUARIO"};
inline constexpr AjusteTexto    ContingenciaHost    {u"CONTINGENCIAHOST"};
inline constexpr AjusteTexto    ContingenciaBase    {u"CONTINGENCIABASE",    u"remote_db"};
inline constexpr AjusteTexto    ContingenciaUsuario {u"CONTINGENCIAUSUARIO", u"remote_user"};
inline constexpr AjusteTexto    ContingenciaSenha   {u"CONTINGENCIASENHA",   u"Rk4817pQ"};
inline constexpr AjusteTexto    PortalNfe           {u"PORTALNFE",
    u"http://www.nfe.fazenda.gov.br/portal/principal.aspx"};
// clang-format on
} // namespace ajustes

// `pasta` is the program folder. A missing or unreadable Config.ini raises LerConfig's errors.
QString Le(const QString& pasta, const AjusteTexto& ajuste);
bool Le(const QString& pasta, const AjusteSim& ajuste);
double Le(const QString& pasta, const AjusteNumero& ajuste);
qint64 Le(const QString& pasta, const AjusteInteiro& ajuste);
int Le(const QString& pasta, const AjusteSegundos& ajuste, int seNenhum);
// Whether the key has a value of its own (not empty), before any default.
bool Definido(const QString& pasta, const AjusteTexto& ajuste);

// The key's text, for messages.
template <typename Ajuste> QString Chave(const Ajuste& ajuste) {
    return QString::fromUtf16(ajuste.chave);
}

} // namespace nfce
