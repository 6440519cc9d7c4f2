#include "emission/ArquivosDaVenda.h"

#include "context/Servidor.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

namespace nfce {

using namespace Qt::StringLiterals;

QString ArquivosDaVenda::DaEmpresa(const QString& relativo) const {
    return Caminho(s.pasta, s.venda.CnpjEmpresa + u"\\"_s + relativo);
}

QString ArquivosDaVenda::DaPastaDaEmpresa(const QString& relativo) const {
    return Caminho(s.pasta, s.empresa.Cnpj + u"\\"_s + relativo);
}

QString ArquivosDaVenda::NoRetorno(const QString& nome) const {
    return DaEmpresa(u"RETORNO\\"_s + nome);
}

QString ArquivosDaVenda::NoEnvio(const QString& nome) const {
    return DaEmpresa(u"Envio\\"_s + nome);
}

QString ArquivosDaVenda::Base() const {
    const QString& data = s.venda.DataArquivo;
    return Zeros(s.venda.NumNfce, 9) + u'_' + Apara(s.venda.CnpjEmpresa) + u'_' +
           s.venda.SerieNfce + u'_' + data.mid(0, 2) + u'_' + data.mid(2, 2) + u'_' +
           data.mid(4, 4);
}

QString ArquivosDaVenda::XmlAutorizado(const QString& chave) const {
    return DaEmpresa(u"ENVIADO\\Autorizados\\"_s + s.venda.MesAutorizados + u"\\"_s + chave +
                     u"-procNFe.xml"_s);
}

QString ArquivosDaVenda::CopiaContabil(const QString& mes, const QVariant& numero) const {
    return DaEmpresa(u"CONTABILIDADE\\"_s + mes + u"\\"_s + Zeros(numero, 9) + u"-procNFe.xml"_s);
}

QString ArquivosDaVenda::XmlValidado(const QString& chave) const {
    return DaEmpresa(u"VALIDAR\\VALIDADO\\"_s + chave + u"-nfe.xml"_s);
}

QString ArquivosDaVenda::XmlComFalha(const QString& chave) const {
    return DaEmpresa(u"Erro\\"_s + chave + u"-nfe.xml"_s);
}

QString ArquivosDaVenda::XmlEmProcessamento(const QString& chave) const {
    return DaEmpresa(u"Enviado\\EmProcessamento\\"_s + chave + u"-nfe.xml"_s);
}

void CopiaRegistrando(Servidor& s, const QString& origem, const QString& destino) {
    try {
        CopiaArquivo(origem, destino);
    } catch (const ErroExecucao& erro) {
        s.ambiente.Registra(u"Não foi possível copiar "_s + origem + u" para "_s + destino +
                            u": "_s + erro.descricao());
    }
}

} // namespace nfce
