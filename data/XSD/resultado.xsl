<?xml version="1.0" encoding="UTF-8"?>
<!--
	Relatório de validação: transforma a lista de ocorrências numa página que se abre de uma vez.

	Entrada: TORVA com BOLETO (data, LAYOUT, ARQUIVO) e um RESULTADO por ocorrência, com DESCRICAO e LOCAL.

	A página não leva programas nem busca nada fora dela. Cada ocorrência tem o seu lugar (o1, o2 e assim por diante), ao
	qual a busca leva e que então se destaca. As ocorrências vêm em blocos de tamanho fixo, que o navegador
	só desenha quando chegam à tela; assim quarenta mil abrem como se fossem duzentas. Cada bloco parte da sua primeira
	ocorrência e caminha de vizinha em vizinha, para que o tempo cresça na proporção do número delas.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>

	<!--
		As ocorrências por tipo, cesto e seção. Guardar mais uma sob a mesma chave custa tanto quanto as que já estão lá;
		o número da linha as reparte por cestos, para que milhares da mesma seção não se acumulem num só.
	-->
	<xsl:variable name="cestos" select="64"/>
	<xsl:key name="porTipoESecao" match="RESULTADO" use="concat(@tipoResultado, ' ', (@linha + 1) mod 64, ' ', LOCAL/@secao)"/>

	<!-- Ocorrências por bloco, e caracteres que se mostram de um valor e da chave de um fundo. -->
	<xsl:variable name="bloco" select="200"/>
	<xsl:variable name="maximoValor" select="300"/>
	<xsl:variable name="maximoChave" select="42"/>

	<xsl:variable name="total" select="count(/TORVA/RESULTADO)"/>

	<xsl:template match="/TORVA">
		<html lang="pt-BR">
			<head>
				<meta name="viewport" content="width=device-width, initial-scale=1"/>
				<title>Resultado da validação</title>
				<xsl:call-template name="estilo"/>
			</head>
			<body>
				<header id="inicio">
					<h1>Resultado da validação</h1>
					<xsl:apply-templates select="BOLETO"/>
				</header>
				<main>
					<xsl:choose>
						<xsl:when test="$total = 0">
							<p class="nada">Não há ocorrências a mostrar.</p>
						</xsl:when>
						<xsl:otherwise>
							<div class="resumos">
								<xsl:call-template name="resumoPorTipo"/>
								<xsl:call-template name="resumoPorSecao"/>
							</div>
							<h2>Ocorrências</h2>
							<xsl:apply-templates select="RESULTADO[position() mod $bloco = 1]" mode="bloco"/>
						</xsl:otherwise>
					</xsl:choose>
				</main>
			</body>
		</html>
	</xsl:template>

	<xsl:template match="BOLETO">
		<dl>
			<dt>Layout</dt>
			<dd><xsl:value-of select="LAYOUT"/></dd>
			<dt>Arquivo</dt>
			<dd><xsl:value-of select="ARQUIVO"/></dd>
			<dt>Validado em</dt>
			<dd><xsl:value-of select="@data"/></dd>
			<dt>Ocorrências</dt>
			<dd><xsl:call-template name="inteiro"><xsl:with-param name="n" select="$total"/></xsl:call-template></dd>
		</dl>
	</xsl:template>

	<!-- Resumos. -->

	<xsl:template name="resumoPorTipo">
		<table class="resumo">
			<caption>Por tipo</caption>
			<thead>
				<tr><th scope="col">Tipo</th><th scope="col">O que é</th><th scope="col" class="n">Ocorrências</th></tr>
			</thead>
			<tbody>
				<tr>
					<th scope="row" class="dominio">Domínio</th>
					<td>Um valor não é aceito pelo layout ou por uma regra</td>
					<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="count(RESULTADO[@tipoResultado = 'DOMINIO'])"/></xsl:call-template></td>
				</tr>
				<tr>
					<th scope="row" class="estrutura">Estrutura</th>
					<td>Um campo não é esperado ali, ou o arquivo está malformado</td>
					<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="count(RESULTADO[@tipoResultado = 'ESTRUTURA'])"/></xsl:call-template></td>
				</tr>
				<tr>
					<th scope="row" class="desconhecido">Desconhecido</th>
					<td>Outra falha que a leitura do arquivo acusou</td>
					<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="count(RESULTADO[@tipoResultado = 'DESCONHECIDO'])"/></xsl:call-template></td>
				</tr>
			</tbody>
		</table>
	</xsl:template>

	<xsl:template name="resumoPorSecao">
		<table class="resumo">
			<caption>Por seção</caption>
			<thead>
				<tr>
					<th scope="col">Seção</th>
					<th scope="col" class="n">Domínio</th>
					<th scope="col" class="n">Estrutura</th>
					<th scope="col" class="n">Desconhecido</th>
					<th scope="col" class="n">Total</th>
				</tr>
			</thead>
			<tbody>
				<xsl:call-template name="linhasPorSecao">
					<xsl:with-param name="lugares" select="RESULTADO[not(LOCAL/@secao = preceding-sibling::*[1]/LOCAL/@secao)]/LOCAL"/>
				</xsl:call-template>
			</tbody>
		</table>
	</xsl:template>

	<!--
		Uma linha para a seção do primeiro dos lugares dados, depois o mesmo para os lugares das outras seções. São tantas
		voltas quantas seções. Os lugares são só os primeiros de cada série da mesma seção, e a chave se consulta uma vez
		por tipo e seção: consultá-la a cada ocorrência custaria o quadrado delas.
	-->
	<xsl:template name="linhasPorSecao">
		<xsl:param name="lugares"/>
		<xsl:if test="$lugares">
			<xsl:variable name="secao" select="string($lugares[1]/@secao)"/>
			<xsl:variable name="dominio">
				<xsl:call-template name="conta">
					<xsl:with-param name="tipo" select="'DOMINIO'"/>
					<xsl:with-param name="secao" select="$secao"/>
				</xsl:call-template>
			</xsl:variable>
			<xsl:variable name="estrutura">
				<xsl:call-template name="conta">
					<xsl:with-param name="tipo" select="'ESTRUTURA'"/>
					<xsl:with-param name="secao" select="$secao"/>
				</xsl:call-template>
			</xsl:variable>
			<xsl:variable name="desconhecido">
				<xsl:call-template name="conta">
					<xsl:with-param name="tipo" select="'DESCONHECIDO'"/>
					<xsl:with-param name="secao" select="$secao"/>
				</xsl:call-template>
			</xsl:variable>
			<tr>
				<th scope="row">
					<xsl:value-of select="$secao"/>
					<xsl:if test="$secao = ''">(fora das seções)</xsl:if>
				</th>
				<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="$dominio"/></xsl:call-template></td>
				<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="$estrutura"/></xsl:call-template></td>
				<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="$desconhecido"/></xsl:call-template></td>
				<td class="n"><xsl:call-template name="inteiro"><xsl:with-param name="n" select="$dominio + $estrutura + $desconhecido"/></xsl:call-template></td>
			</tr>
			<xsl:call-template name="linhasPorSecao">
				<xsl:with-param name="lugares" select="$lugares[@secao != $secao]"/>
			</xsl:call-template>
		</xsl:if>
	</xsl:template>

	<!-- Quantas ocorrências de um tipo há numa seção: a soma dos cestos, e das que não dizem a linha. -->
	<xsl:template name="conta">
		<xsl:param name="tipo"/>
		<xsl:param name="secao"/>
		<xsl:param name="cesto" select="0"/>
		<xsl:param name="soma" select="count(key('porTipoESecao', concat($tipo, ' NaN ', $secao)))"/>
		<xsl:choose>
			<xsl:when test="$cesto = $cestos">
				<xsl:value-of select="$soma"/>
			</xsl:when>
			<xsl:otherwise>
				<xsl:call-template name="conta">
					<xsl:with-param name="tipo" select="$tipo"/>
					<xsl:with-param name="secao" select="$secao"/>
					<xsl:with-param name="cesto" select="$cesto + 1"/>
					<xsl:with-param name="soma" select="$soma + count(key('porTipoESecao', concat($tipo, ' ', $cesto, ' ', $secao)))"/>
				</xsl:call-template>
			</xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<!-- Ocorrências. -->

	<xsl:template match="RESULTADO" mode="bloco">
		<xsl:variable name="primeira" select="(position() - 1) * $bloco + 1"/>
		<xsl:variable name="ultima" select="$primeira + $bloco - 1"/>
		<section class="bloco">
			<!-- A altura que se supõe de um bloco ainda por desenhar é a de um cheio. -->
			<xsl:if test="$ultima &gt; $total">
				<xsl:attribute name="style">
					<xsl:value-of select="concat('contain-intrinsic-size: auto ', ($total - $primeira + 2) * 55, 'px')"/>
				</xsl:attribute>
			</xsl:if>
			<table class="ocorrencias">
				<caption>
					<xsl:text>Ocorrências </xsl:text>
					<xsl:call-template name="inteiro"><xsl:with-param name="n" select="$primeira"/></xsl:call-template>
					<xsl:text> a </xsl:text>
					<xsl:call-template name="inteiro">
						<xsl:with-param name="n" select="$ultima * ($ultima &lt;= $total) + $total * ($ultima &gt; $total)"/>
					</xsl:call-template>
				</caption>
				<thead>
					<tr>
						<th scope="col" class="cNumero n">Nº</th>
						<th scope="col" class="cTipo">Tipo</th>
						<th scope="col" class="cDescricao">Ocorrência</th>
						<th scope="col" class="cFundo">Fundo ou carteira</th>
						<th scope="col" class="cSecao">Seção</th>
						<th scope="col" class="cCampo">Campo</th>
						<th scope="col" class="cValor">Valor</th>
						<th scope="col" class="cLinha n">Linha</th>
						<th scope="col" class="cColuna n">Coluna</th>
					</tr>
				</thead>
				<tbody>
					<xsl:apply-templates select=".">
						<xsl:with-param name="numero" select="$primeira"/>
						<xsl:with-param name="faltam" select="$bloco"/>
					</xsl:apply-templates>
				</tbody>
			</table>
		</section>
	</xsl:template>

	<!-- Uma ocorrência, e depois dela a vizinha, enquanto faltar alguma no bloco. -->
	<xsl:template match="RESULTADO">
		<xsl:param name="numero"/>
		<xsl:param name="faltam"/>
		<tr id="o{$numero}">
			<td class="n"><xsl:value-of select="$numero"/></td>
			<xsl:choose>
				<xsl:when test="@tipoResultado = 'DOMINIO'"><td class="dominio">Domínio</td></xsl:when>
				<xsl:when test="@tipoResultado = 'ESTRUTURA'"><td class="estrutura">Estrutura</td></xsl:when>
				<xsl:when test="@tipoResultado = 'DESCONHECIDO'"><td class="desconhecido">Desconhecido</td></xsl:when>
				<xsl:otherwise><td><xsl:value-of select="@tipoResultado"/></td></xsl:otherwise>
			</xsl:choose>
			<td>
				<xsl:value-of select="DESCRICAO/@titulo"/>
				<xsl:if test="DESCRICAO != DESCRICAO/@titulo">
					<br/>
					<small><xsl:value-of select="DESCRICAO"/></small>
				</xsl:if>
			</td>
			<xsl:apply-templates select="LOCAL"/>
			<td class="n"><xsl:if test="@linha &gt; 0"><xsl:value-of select="@linha"/></xsl:if></td>
			<td class="n"><xsl:if test="@coluna &gt; 0"><xsl:value-of select="@coluna"/></xsl:if></td>
		</tr>
		<xsl:if test="$faltam &gt; 1">
			<xsl:apply-templates select="following-sibling::RESULTADO[1]">
				<xsl:with-param name="numero" select="$numero + 1"/>
				<xsl:with-param name="faltam" select="$faltam - 1"/>
			</xsl:apply-templates>
		</xsl:if>
	</xsl:template>

	<!-- As quatro colunas do lugar. As chaves dos fundos anteriores vêm antes da do fundo: de uma longa, vale o fim. -->
	<xsl:template match="LOCAL">
		<td>
			<xsl:choose>
				<xsl:when test="string-length(@fundo) &gt; $maximoChave">
					<xsl:text>…</xsl:text>
					<xsl:value-of select="substring(@fundo, string-length(@fundo) - $maximoChave + 1)"/>
				</xsl:when>
				<xsl:otherwise><xsl:value-of select="@fundo"/></xsl:otherwise>
			</xsl:choose>
			<xsl:if test="@atributo != ''">
				<br/>
				<small><xsl:value-of select="@atributo"/></small>
			</xsl:if>
		</td>
		<td><xsl:value-of select="@secao"/></td>
		<td><xsl:value-of select="@campo"/></td>
		<td class="valor">
			<xsl:choose>
				<xsl:when test="string-length(@valor) &gt; $maximoValor">
					<xsl:value-of select="substring(@valor, 1, $maximoValor)"/>
					<xsl:text>… </xsl:text>
					<small>
						<xsl:text>(</xsl:text>
						<xsl:call-template name="inteiro"><xsl:with-param name="n" select="string-length(@valor)"/></xsl:call-template>
						<xsl:text> caracteres)</xsl:text>
					</small>
				</xsl:when>
				<xsl:otherwise><xsl:value-of select="@valor"/></xsl:otherwise>
			</xsl:choose>
		</td>
	</xsl:template>

	<!-- Número inteiro com pontos de milhar. -->
	<xsl:decimal-format name="brasil" decimal-separator="," grouping-separator="."/>
	<xsl:template name="inteiro">
		<xsl:param name="n"/>
		<xsl:value-of select="format-number($n, '#.##0', 'brasil')"/>
	</xsl:template>

	<xsl:template name="estilo">
		<style>
			:root { color-scheme: light; }
			body { margin: 0; padding: 1rem; font: 14px/1.4 Verdana, "DejaVu Sans", Arial, sans-serif; color: #1a1a1a; background: #fff; }
			h1 { margin: 0 0 .5rem; font-size: 1.4rem; }
			h2 { margin: 1.5rem 0 .5rem; font-size: 1.1rem; }
			dl { display: grid; grid-template-columns: max-content 1fr; gap: .15rem 1rem; margin: 0; }
			dt { font-weight: bold; }
			dd { margin: 0; overflow-wrap: anywhere; }
			.nada { padding: 1rem; border-left: 4px solid #6a7684; background: #f1f3f5; }
			.resumos { display: flex; flex-wrap: wrap; gap: 1.5rem; align-items: flex-start; margin-top: 1rem; }
			table { border-collapse: collapse; }
			caption { padding: .25rem 0; text-align: left; font-weight: bold; }
			th, td { padding: .2rem .5rem; border: 1px solid #b8b8b8; text-align: left; vertical-align: top; }
			thead th { background: #e4e9ee; }
			.n { text-align: right; font-variant-numeric: tabular-nums; }
			.bloco { content-visibility: auto; contain-intrinsic-size: auto 11000px; margin-bottom: 1rem; }
			.ocorrencias { width: 100%; table-layout: fixed; }
			.ocorrencias td { overflow-wrap: anywhere; }
			.ocorrencias tbody tr:nth-child(even) { background: #f6f7f8; }
			.ocorrencias tbody tr { scroll-margin-top: 30vh; }
			.ocorrencias tbody tr:target { background: #ffe78a; }
			.cNumero { width: 6%; } .cTipo { width: 10%; } .cDescricao { width: 22%; } .cFundo { width: 14%; }
			.cSecao { width: 11%; } .cCampo { width: 11%; } .cValor { width: 14%; } .cLinha { width: 6%; } .cColuna { width: 6%; }
			.valor { white-space: pre-wrap; }
			.dominio { color: #7a4b00; } .estrutura { color: #a01818; } .desconhecido { color: #3c3c8c; }
			small { color: #4a4a4a; }
			@media print {
				@page { size: A4 landscape; margin: 12mm; }
				body { padding: 0; font-size: 8pt; }
				.bloco { content-visibility: visible; }
				thead { display: table-header-group; }
				tr { break-inside: avoid; }
				.ocorrencias tbody tr:target { background: none; }
				.resumo { break-inside: avoid; }
			}
		</style>
	</xsl:template>
</xsl:stylesheet>
