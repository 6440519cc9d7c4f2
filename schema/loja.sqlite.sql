-- The shop's database (SQLite): the same tables as loja.mysql.sql. Dates are TEXT
-- "yyyy-mm-dd", times TEXT "HH:MM:SS"; DECIMAL columns have NUMERIC affinity.
-- Flags are INTEGER with 0 as default; columns that statements compare with '' or 0
-- are NOT NULL with that default. Money DECIMAL(15,2), unit prices and costs (15,4).

CREATE TABLE IF NOT EXISTS vendas (
    id INTEGER PRIMARY KEY,
    data TEXT NULL,
    hora TEXT NULL,
    cupom INT NOT NULL DEFAULT 0,
    nfce INT NOT NULL DEFAULT 0,
    loja INT NOT NULL DEFAULT 0,
    caixa INT NOT NULL DEFAULT 0,
    ccf INT NOT NULL DEFAULT 0,
    serie VARCHAR(20) NOT NULL DEFAULT '',
    operador VARCHAR(20) NOT NULL DEFAULT '',
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente INT NOT NULL DEFAULT 0,
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    cgc VARCHAR(20) NOT NULL DEFAULT '',
    forpag INT NOT NULL DEFAULT 0,
    valor DECIMAL(15,2) NOT NULL DEFAULT 0,
    Desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    Acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    Dinheiro DECIMAL(15,2) NOT NULL DEFAULT 0,
    Cheque DECIMAL(15,2) NOT NULL DEFAULT 0,
    CartaoDeb DECIMAL(15,2) NOT NULL DEFAULT 0,
    CartaoCred DECIMAL(15,2) NOT NULL DEFAULT 0,
    Outros DECIMAL(15,2) NOT NULL DEFAULT 0,
    Vale DECIMAL(15,2) NOT NULL DEFAULT 0,
    pix DECIMAL(15,2) NOT NULL DEFAULT 0,
    alimentacao DECIMAL(15,2) NOT NULL DEFAULT 0,
    credloja DECIMAL(15,2) NOT NULL DEFAULT 0,
    situacao VARCHAR(1) NOT NULL DEFAULT 'N',
    chave VARCHAR(44) NOT NULL DEFAULT '',
    autorizacao VARCHAR(60) NOT NULL DEFAULT '',
    erro TEXT NULL,
    tempo VARCHAR(10) NOT NULL DEFAULT '',
    enviotime INTEGER NOT NULL DEFAULT 0,
    lote VARCHAR(20) NOT NULL DEFAULT '',
    xml VARCHAR(1) NOT NULL DEFAULT '',
    xml_info TEXT NULL,
    sync INTEGER NOT NULL DEFAULT 0,
    exportado INTEGER NOT NULL DEFAULT 0
);

-- pending sales: enviotime = 0 ordered by cupom; re-queuing: enviotime = 1, tempo <> '1'
CREATE INDEX IF NOT EXISTS vendas_envio ON vendas (enviotime, cupom);
CREATE INDEX IF NOT EXISTS vendas_reenvio ON vendas (enviotime, tempo);
CREATE INDEX IF NOT EXISTS vendas_nfce ON vendas (nfce);
CREATE INDEX IF NOT EXISTS vendas_cupom ON vendas (cupom);
CREATE INDEX IF NOT EXISTS vendas_chave ON vendas (chave);
CREATE INDEX IF NOT EXISTS vendas_data ON vendas (data);
CREATE INDEX IF NOT EXISTS vendas_exportado ON vendas (exportado, data, cupom);

CREATE TABLE IF NOT EXISTS itens (
    id INTEGER PRIMARY KEY,
    data TEXT NULL,
    hora TEXT NULL,
    cupom INT NOT NULL DEFAULT 0,
    nfce INT NOT NULL DEFAULT 0,
    Item INT NOT NULL DEFAULT 0,
    loja INT NOT NULL DEFAULT 0,
    caixa INT NOT NULL DEFAULT 0,
    ccf INT NOT NULL DEFAULT 0,
    serie VARCHAR(20) NOT NULL DEFAULT '',
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente INT NOT NULL DEFAULT 0,
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    forpag INT NOT NULL DEFAULT 0,
    codprod INT NOT NULL DEFAULT 0,
    nomeprod VARCHAR(120) NOT NULL DEFAULT '',
    quant DECIMAL(15,3) NOT NULL DEFAULT 0,
    valor DECIMAL(15,4) NOT NULL DEFAULT 0,
    valortotal DECIMAL(15,2) NOT NULL DEFAULT 0,
    custo DECIMAL(15,4) NOT NULL DEFAULT 0,
    Acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    Desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    icms VARCHAR(10) NOT NULL DEFAULT '',
    trib VARCHAR(10) NOT NULL DEFAULT '',
    situacao VARCHAR(1) NOT NULL DEFAULT 'N',
    sync INTEGER NOT NULL DEFAULT 0,
    exportado INTEGER NOT NULL DEFAULT 0
);

CREATE INDEX IF NOT EXISTS itens_nfce ON itens (nfce, situacao);
CREATE INDEX IF NOT EXISTS itens_cupom ON itens (cupom, Item);
CREATE INDEX IF NOT EXISTS itens_item ON itens (Item);
CREATE INDEX IF NOT EXISTS itens_exportado ON itens (exportado, data, cupom);

CREATE TABLE IF NOT EXISTS produtos (
    codigo INT NOT NULL,
    nome VARCHAR(120) NOT NULL DEFAULT '',
    ncm VARCHAR(10) NOT NULL DEFAULT '',
    cest VARCHAR(10) NOT NULL DEFAULT '',
    cfop VARCHAR(5) NOT NULL DEFAULT '',
    unidade VARCHAR(6) NOT NULL DEFAULT '',
    CST INT NOT NULL DEFAULT 0,
    icms INT NOT NULL DEFAULT 0,
    reducao_base DECIMAL(15,4) NOT NULL DEFAULT 0,
    estoque DECIMAL(15,3) NOT NULL DEFAULT 0,
    estoquefisico DECIMAL(15,3) NOT NULL DEFAULT 0,
    PRIMARY KEY (codigo)
);

CREATE TABLE IF NOT EXISTS clientes (
    codigo INT NOT NULL,
    nome VARCHAR(100) NOT NULL DEFAULT '',
    cgc VARCHAR(20) NOT NULL DEFAULT '',
    PRIMARY KEY (codigo)
);

CREATE TABLE IF NOT EXISTS empresa (
    id INTEGER PRIMARY KEY,
    mens1 VARCHAR(200) NOT NULL DEFAULT '',
    mens2 VARCHAR(200) NOT NULL DEFAULT '',
    pathenvio VARCHAR(255) NOT NULL DEFAULT ''
);

CREATE TABLE IF NOT EXISTS caixas (
    id INTEGER PRIMARY KEY,
    nome VARCHAR(60) NOT NULL DEFAULT ''
);

CREATE TABLE IF NOT EXISTS forpag (
    codigo INT NOT NULL,
    nome VARCHAR(60) NOT NULL DEFAULT '',
    plano VARCHAR(10) NOT NULL DEFAULT '',
    parc1 INT NOT NULL DEFAULT 0,
    PRIMARY KEY (codigo)
);

CREATE TABLE IF NOT EXISTS orcamento (
    cupom INT NOT NULL,
    autorizacao VARCHAR(60) NOT NULL DEFAULT '',
    tempo VARCHAR(10) NOT NULL DEFAULT '',
    emitido VARCHAR(1) NOT NULL DEFAULT '',
    cupomnfce INT NOT NULL DEFAULT 0,
    chave VARCHAR(44) NOT NULL DEFAULT '',
    PRIMARY KEY (cupom)
);

-- Contingency periods; dates "dd/mm/yyyy" and times "HH:MM:SS" are kept as text.
CREATE TABLE IF NOT EXISTS nfce (
    id INTEGER PRIMARY KEY,
    dataentrada VARCHAR(10) NOT NULL DEFAULT '',
    datasaida VARCHAR(10) NOT NULL DEFAULT '',
    horaentrada VARCHAR(8) NOT NULL DEFAULT '',
    horasaida VARCHAR(8) NOT NULL DEFAULT ''
);
