-- The remote export database (SQLite): the same tables as remota.mysql.sql. Every value arrives as a text literal;
-- identity-like columns are text so that whatever the shop stored is taken. quant is
-- text on purpose: quantities arrive formatted with grouping points ("1.234.500").

CREATE TABLE IF NOT EXISTS itens (
    id INTEGER PRIMARY KEY,
    data TEXT NULL,
    cupom INT NOT NULL DEFAULT 0,
    loja VARCHAR(10) NOT NULL DEFAULT '',
    caixa VARCHAR(3) NOT NULL DEFAULT '',
    valor DECIMAL(15,2) NOT NULL DEFAULT 0,
    quant VARCHAR(20) NOT NULL DEFAULT '',
    icms VARCHAR(10) NOT NULL DEFAULT '',
    trib VARCHAR(10) NOT NULL DEFAULT '',
    numvenda INT NOT NULL DEFAULT 0,
    item INT NOT NULL DEFAULT 0,
    custo DECIMAL(15,2) NOT NULL DEFAULT 0,
    valortotal DECIMAL(15,2) NOT NULL DEFAULT 0,
    ccf VARCHAR(10) NOT NULL DEFAULT '',
    codprod INT NOT NULL DEFAULT 0,
    nomeprod VARCHAR(120) NOT NULL DEFAULT '',
    desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente VARCHAR(10) NOT NULL DEFAULT '',
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    dataimp TEXT NULL,
    comissao DECIMAL(15,2) NOT NULL DEFAULT 0,
    arq VARCHAR(10) NOT NULL DEFAULT '',
    tipo VARCHAR(2) NOT NULL DEFAULT '',
    fisc VARCHAR(2) NOT NULL DEFAULT '',
    situacao VARCHAR(1) NOT NULL DEFAULT '',
    hora TEXT NULL,
    forpag VARCHAR(10) NOT NULL DEFAULT '',
    serie VARCHAR(20) NOT NULL DEFAULT ''
);

CREATE INDEX IF NOT EXISTS itens_cupom ON itens (cupom, caixa, item);

CREATE TABLE IF NOT EXISTS vendas (
    id INTEGER PRIMARY KEY,
    data TEXT NULL,
    loja VARCHAR(10) NOT NULL DEFAULT '',
    caixa VARCHAR(3) NOT NULL DEFAULT '',
    hora TEXT NULL,
    valor DECIMAL(15,2) NOT NULL DEFAULT 0,
    desconto DECIMAL(15,2) NOT NULL DEFAULT 0,
    acrescimo DECIMAL(15,2) NOT NULL DEFAULT 0,
    cupom INT NOT NULL DEFAULT 0,
    numvenda INT NOT NULL DEFAULT 0,
    forpag VARCHAR(10) NOT NULL DEFAULT '',
    itens INT NOT NULL DEFAULT 0,
    dinheiro DECIMAL(15,2) NOT NULL DEFAULT 0,
    cheque DECIMAL(15,2) NOT NULL DEFAULT 0,
    cartao DECIMAL(15,2) NOT NULL DEFAULT 0,
    cartaocred DECIMAL(15,2) NOT NULL DEFAULT 0,
    vale DECIMAL(15,2) NOT NULL DEFAULT 0,
    outros DECIMAL(15,2) NOT NULL DEFAULT 0,
    vendedor VARCHAR(60) NOT NULL DEFAULT '',
    cliente VARCHAR(10) NOT NULL DEFAULT '',
    nomecliente VARCHAR(100) NOT NULL DEFAULT '',
    dtimp TEXT NULL,
    ccf VARCHAR(10) NOT NULL DEFAULT '',
    arq VARCHAR(10) NOT NULL DEFAULT '',
    situacao VARCHAR(1) NOT NULL DEFAULT '',
    serie VARCHAR(20) NOT NULL DEFAULT '',
    operador VARCHAR(20) NOT NULL DEFAULT '',
    fisc VARCHAR(2) NOT NULL DEFAULT '',
    chave VARCHAR(44) NOT NULL DEFAULT '',
    autorizacao VARCHAR(60) NOT NULL DEFAULT '',
    erro TEXT NULL,
    tempo VARCHAR(10) NOT NULL DEFAULT '',
    modelo VARCHAR(2) NOT NULL DEFAULT '',
    pix DECIMAL(15,2) NOT NULL DEFAULT 0,
    alimentacao DECIMAL(15,2) NOT NULL DEFAULT 0,
    credloja DECIMAL(15,2) NOT NULL DEFAULT 0,
    xml_info TEXT NULL
);

CREATE INDEX IF NOT EXISTS vendas_cupom ON vendas (cupom, caixa);

CREATE TABLE IF NOT EXISTS produtos (
    codigo INT NOT NULL,
    nome VARCHAR(120) NOT NULL DEFAULT '',
    estoque DECIMAL(15,3) NOT NULL DEFAULT 0,
    estoquefisico DECIMAL(15,3) NOT NULL DEFAULT 0,
    PRIMARY KEY (codigo)
);

CREATE TABLE IF NOT EXISTS contasreceber (
    id INTEGER PRIMARY KEY,
    codplano VARCHAR(10) NOT NULL DEFAULT '',
    codcli VARCHAR(10) NOT NULL DEFAULT '',
    nome VARCHAR(100) NOT NULL DEFAULT '',
    datalanc TEXT NULL,
    valor DECIMAL(15,2) NOT NULL DEFAULT 0,
    datavenc TEXT NULL,
    forpgto VARCHAR(10) NOT NULL DEFAULT '',
    nomepgto VARCHAR(60) NOT NULL DEFAULT '',
    tipo VARCHAR(2) NOT NULL DEFAULT '',
    numvenda INT NOT NULL DEFAULT 0,
    parcela INT NOT NULL DEFAULT 0,
    documento VARCHAR(20) NOT NULL DEFAULT '',
    obs VARCHAR(20) NOT NULL DEFAULT '',
    valortotal DECIMAL(15,2) NOT NULL DEFAULT 0,
    usuario VARCHAR(10) NOT NULL DEFAULT ''
);

CREATE INDEX IF NOT EXISTS contasreceber_venda ON contasreceber (numvenda);
