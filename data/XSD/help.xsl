<?xml version="1.0" encoding="UTF-8"?>
<!--
	Ajuda do programa: transforma o catálogo numa página só, que se lê sem rede e se imprime.

	Entrada: o catálogo. A página não leva programas nem busca nada fora dela; a política no cabeçalho o garante, porque
	o catálogo pode vir de fora.

	Âncoras, feitas das tags e por isso estáveis:
	  layout/<tag>, layout/<tag>/<seção>/<seção>, layout/<tag>/<seção>@<campo>, tabela/<id>
	"/" e "@" não cabem numa tag; assim uma âncora nunca se confunde com outra nem com as fixas (indice, tabelas, ...).

	O comentário logo antes de uma TABELA é a descrição dela. Nomes de tabelas valem sem olhar maiúsculas, como no programa.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>

	<!-- Uma chave não pode usar variáveis: as letras estão escritas em cada uma. -->
	<xsl:key name="tabela" match="configuracao/TABELAS/TABELA" use="translate(@id, 'abcdefghijklmnopqrstuvwxyzáàâãéêíóôõúüç', 'ABCDEFGHIJKLMNOPQRSTUVWXYZÁÀÂÃÉÊÍÓÔÕÚÜÇ')"/>
	<xsl:key name="usoDaTabela" match="CAMPO[COLUNA/@tabela != '']" use="concat(translate(COLUNA/@tabela, 'abcdefghijklmnopqrstuvwxyzáàâãéêíóôõúüç', 'ABCDEFGHIJKLMNOPQRSTUVWXYZÁÀÂÃÉÊÍÓÔÕÚÜÇ'), ' ', generate-id(ancestor::BOLETO[1]))"/>
	<xsl:key name="descricao" match="configuracao/TABELAS/comment()" use="generate-id(following-sibling::*[1])"/>

	<xsl:variable name="minusculas" select="'abcdefghijklmnopqrstuvwxyzáàâãéêíóôõúüç'"/>
	<xsl:variable name="maiusculas" select="'ABCDEFGHIJKLMNOPQRSTUVWXYZÁÀÂÃÉÊÍÓÔÕÚÜÇ'"/>

	<xsl:variable name="app" select="/*/app"/>
	<xsl:variable name="layouts" select="//BOLETO"/>
	<xsl:variable name="tabelas" select="//configuracao/TABELAS/TABELA"/>
	<!-- Até quantos códigos de uma tabela se mostram junto do campo. -->
	<xsl:variable name="maximoCodigos" select="6"/>

	<xsl:template match="/">
		<html lang="pt-BR">
			<head>
				<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'"/>
				<meta name="viewport" content="width=device-width, initial-scale=1"/>
				<title>Ajuda - <xsl:value-of select="$app/titulo"/></title>
				<xsl:call-template name="estilo"/>
			</head>
			<body>
				<a class="salto" href="#conteudo">Ir para o conteúdo</a>
				<xsl:call-template name="lateral"/>
				<main id="conteudo">
					<xsl:call-template name="abertura"/>
					<xsl:call-template name="ferramentas"/>
					<xsl:call-template name="comoLer"/>
					<xsl:call-template name="indice"/>
					<xsl:apply-templates select="$layouts" mode="parte"/>
					<xsl:call-template name="apendice"/>
				</main>
			</body>
		</html>
	</xsl:template>

	<!-- Índice lateral: fica à vista em janelas largas, abre a página nas estreitas e não se imprime. -->

	<xsl:template name="lateral">
		<nav class="lado" aria-label="Índice da página">
			<p class="nome"><a href="#inicio"><xsl:value-of select="$app/titulo"/></a></p>
			<ul>
				<li><a href="#ferramentas">As duas ferramentas</a></li>
				<li><a href="#leitura">Como ler esta página</a></li>
				<li><a href="#indice">Índice dos layouts</a></li>
			</ul>
			<p class="grupo">Layouts</p>
			<xsl:for-each select="$layouts">
				<xsl:variable name="ancora" select="concat('layout/', normalize-space(@tag))"/>
				<details>
					<summary><xsl:value-of select="normalize-space(@nome)"/><xsl:text> </xsl:text><span class="versao"><xsl:value-of select="normalize-space(@versao)"/></span></summary>
					<ul>
						<li><a href="#{$ancora}">Resumo e forma do documento</a></li>
						<xsl:apply-templates select="SECAO" mode="lateral"><xsl:with-param name="pai" select="$ancora"/></xsl:apply-templates>
					</ul>
				</details>
			</xsl:for-each>
			<p class="grupo">Apêndice</p>
			<details>
				<summary>Tabelas de valores</summary>
				<ul>
					<li><a href="#tabelas">Todas as tabelas</a></li>
					<xsl:for-each select="$tabelas"><li><a href="#tabela/{@id}"><xsl:value-of select="@id"/></a></li></xsl:for-each>
				</ul>
			</details>
		</nav>
	</xsl:template>

	<xsl:template match="SECAO" mode="lateral">
		<xsl:param name="pai"/>
		<xsl:variable name="ancora" select="concat($pai, '/', normalize-space(@tag))"/>
		<li>
			<a href="#{$ancora}"><xsl:value-of select="normalize-space(@nome)"/></a>
			<xsl:if test="SECAO">
				<ul><xsl:apply-templates select="SECAO" mode="lateral"><xsl:with-param name="pai" select="$ancora"/></xsl:apply-templates></ul>
			</xsl:if>
		</li>
	</xsl:template>

	<!-- Abertura, ferramentas e leitura. -->

	<xsl:template name="abertura">
		<header class="capa" id="inicio">
			<h1>Ajuda do <xsl:value-of select="$app/titulo"/></h1>
			<p class="lema"><xsl:value-of select="$app/descricao"/></p>
			<dl class="ficha">
				<div><dt>Versão do catálogo</dt><dd><xsl:value-of select="$app/versao"/></dd></div>
				<xsl:if test="normalize-space($app/site/caption) != ''">
					<div><dt>Site</dt><dd><xsl:call-template name="site"/></dd></div>
				</xsl:if>
				<xsl:if test="normalize-space($app/email/caption) != ''">
					<div><dt>Atendimento</dt><dd><xsl:call-template name="email"/></dd></div>
				</xsl:if>
			</dl>
		</header>
	</xsl:template>

	<!-- Só endereços da rede viram ligação; outro texto fica como texto. -->
	<xsl:template name="site">
		<xsl:variable name="link" select="normalize-space($app/site/link)"/>
		<xsl:choose>
			<xsl:when test="starts-with($link, 'https://') or starts-with($link, 'http://')">
				<a href="{$link}" rel="noopener noreferrer"><xsl:value-of select="$app/site/caption"/></a>
			</xsl:when>
			<xsl:otherwise><xsl:value-of select="$app/site/caption"/></xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<xsl:template name="email">
		<xsl:variable name="link" select="normalize-space($app/email/link)"/>
		<xsl:variable name="endereco" select="concat(substring-after($link, 'mailto:'), substring($link, 1, string-length($link) * not(starts-with($link, 'mailto:'))))"/>
		<xsl:choose>
			<xsl:when test="contains($endereco, '@')"><a href="mailto:{$endereco}"><xsl:value-of select="$app/email/caption"/></a></xsl:when>
			<xsl:otherwise><xsl:value-of select="$app/email/caption"/></xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<xsl:template name="ferramentas">
		<section id="ferramentas">
			<h2>As duas ferramentas</h2>
			<p>Cada tipo de arquivo é um <strong>layout</strong>: as suas seções, os seus campos e as regras de cada valor. O programa trabalha com os layouts de duas maneiras, cada uma com o seu menu e o seu botão.</p>
			<div class="duas">
				<section>
					<h3>Tramador: montar um documento</h3>
					<ol>
						<li>No menu <b>Tramador</b>, escolha o layout. Comece do zero ou traga um documento com <b>Abrir</b>; <b>Importar</b> lê uma planilha.</li>
						<li>Na árvore à esquerda, escolha o fundo e a seção; a grade à direita mostra as linhas dela.</li>
						<li><b>Adicionar</b> abre uma linha e <b>Remover</b> apaga as escolhidas. <kbd>Enter</kbd> termina o campo e <kbd>Ctrl</kbd>+<kbd>Enter</kbd> termina a linha, que é conferida nesse momento. <kbd>Ctrl</kbd> com o <kbd>+</kbd> ou o <kbd>-</kbd> do teclado numérico adiciona ou remove.</li>
						<li><b>Salvar</b> confere o documento inteiro antes de gravar. Se já havia um arquivo com esse nome, ele fica guardado ao lado com o final <code>.bkp</code>.</li>
					</ol>
				</section>
				<section>
					<h3>Validador: conferir arquivos prontos</h3>
					<ol>
						<li>No menu <b>Validador</b>, escolha o layout e junte os arquivos com <b>Adicionar</b>.</li>
						<li><b>Validar</b> confere todos, um depois do outro; <b>Parar</b> interrompe entre dois arquivos.</li>
						<li><b>Resultado</b> abre o relatório do arquivo escolhido, com cada ocorrência no seu fundo, seção e campo.</li>
						<li><b>Editar</b> mostra o texto do arquivo com a lista das ocorrências: um clique leva ao lugar de cada uma.</li>
					</ol>
				</section>
			</div>
			<h3>O que se confere num documento</h3>
			<ol>
				<li><b>Estrutura</b>: as seções e os campos, a ordem e a forma dos valores, pelo esquema do layout.</li>
				<li><b>Valores</b>: a regra de cada campo, descrita nesta página.</li>
				<li><b>Relações</b>: as regras entre campos, quando o layout as tem, e as somas dos arquivos de posição.</li>
			</ol>
		</section>
	</xsl:template>

	<xsl:template name="comoLer">
		<section id="leitura">
			<h2>Como ler esta página</h2>
			<p>A ajuda sai do mesmo catálogo que o programa usa: o que está aqui é o que ele faz. Depois do <a href="#indice">índice</a> vem uma parte para cada layout e, no fim, as <a href="#tabelas">tabelas de valores</a>. O nome de cada campo é também o seu endereço: use-o para apontar o campo a um colega.</p>
			<dl class="legenda">
				<div><dt>Seção</dt><dd>Um grupo de campos que se repete. A <span class="marca mestre">seção mestre</span> é o cabeçalho: cada linha dela é um fundo ou uma carteira, e as linhas das outras seções pertencem a ele.</dd></div>
				<div><dt>Ocorrência</dt><dd>Quantas linhas a seção aceita em cada fundo ou carteira; <code>*</code> é sem limite.</dd></div>
				<div><dt>Grupo</dt><dd>O elemento que, no arquivo, envolve cada cabeçalho com as suas seções.</dd></div>
				<div><dt>Campo</dt><dd>O título que a grade mostra e, abaixo, o nome do elemento no arquivo. O <span class="marca chave">campo-chave</span> identifica o fundo ou a carteira.</dd></div>
				<div><dt>Tamanho</dt><dd>Caracteres de um texto, ou o total de algarismos de um número.</dd></div>
				<div><dt>Obrigatório</dt><dd><b>Sim</b> quando o campo não pode ficar vazio. Um campo vazio que não é obrigatório passa por qualquer regra.</dd></div>
				<div><dt>Regra</dt><dd><b>Data</b>: um dia que existe, depois de 1900. <b>CNPJ</b>: catorze algarismos com os dois dígitos verificadores certos. <b>Tabela</b>: um dos códigos da tabela, escrito igual, com as mesmas maiúsculas.</dd></div>
				<div><dt>Padrão</dt><dd>O valor usual do campo, quando há um: uma sugestão a quem preenche, que o programa não põe por conta própria.</dd></div>
				<div><dt>No arquivo</dt><dd>A forma em que o valor é gravado, com um exemplo: datas em ano, mês e dia, sem barras; números com ponto decimal e sem separador de milhar.</dd></div>
			</dl>
		</section>
	</xsl:template>

	<xsl:template name="indice">
		<section id="indice">
			<h2>Índice dos layouts</h2>
			<xsl:if test="not($layouts)"><p>O catálogo não tem layouts.</p></xsl:if>
			<xsl:if test="$layouts">
				<table class="lista layouts">
					<caption>Os layouts e as ferramentas que os atendem</caption>
					<thead><tr><th scope="col">Layout</th><th scope="col">Versão</th><th scope="col">Elemento raiz</th><th scope="col">Tramador</th><th scope="col">Validador</th><th scope="col">Regras entre campos</th><th scope="col" class="n">Seções</th><th scope="col" class="n">Campos</th></tr></thead>
					<tbody>
						<xsl:for-each select="$layouts">
							<tr>
								<th scope="row"><a href="#layout/{normalize-space(@tag)}"><xsl:value-of select="normalize-space(@nome)"/></a></th>
								<td><xsl:value-of select="normalize-space(@versao)"/></td>
								<td><code><xsl:value-of select="normalize-space(@tag)"/></code></td>
								<td><xsl:call-template name="simNao"><xsl:with-param name="sim" select="normalize-space(translate(@tramador, $minusculas, $maiusculas)) = 'SIM'"/></xsl:call-template></td>
								<td><xsl:call-template name="simNao"><xsl:with-param name="sim" select="normalize-space(@validador) != ''"/></xsl:call-template></td>
								<td><xsl:call-template name="simNao"><xsl:with-param name="sim" select="normalize-space(@formula) != ''"/></xsl:call-template></td>
								<td class="n"><xsl:value-of select="count(descendant::SECAO)"/></td>
								<td class="n"><xsl:value-of select="count(descendant::CAMPO)"/></td>
							</tr>
						</xsl:for-each>
					</tbody>
				</table>
			</xsl:if>
		</section>
	</xsl:template>

	<xsl:template name="simNao">
		<xsl:param name="sim"/>
		<xsl:choose><xsl:when test="$sim"><b class="sim">Sim</b></xsl:when><xsl:otherwise><span class="nao">Não</span></xsl:otherwise></xsl:choose>
	</xsl:template>

	<!-- Um layout. -->

	<xsl:template match="BOLETO" mode="parte">
		<xsl:variable name="ancora" select="concat('layout/', normalize-space(@tag))"/>
		<article class="layout" id="{$ancora}">
			<h2><xsl:value-of select="normalize-space(@nome)"/><xsl:text> </xsl:text><span class="versao"><xsl:value-of select="normalize-space(@versao)"/></span></h2>
			<p class="voltar"><a href="#indice">Voltar ao índice</a></p>
			<dl class="ficha">
				<div><dt>Elemento raiz</dt><dd><xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tag"/></xsl:call-template></dd></div>
				<div><dt>Tramador</dt><dd><xsl:call-template name="simNao"><xsl:with-param name="sim" select="normalize-space(translate(@tramador, $minusculas, $maiusculas)) = 'SIM'"/></xsl:call-template></dd></div>
				<div><dt>Validador</dt><dd><xsl:call-template name="arquivo"><xsl:with-param name="nome" select="@validador"/></xsl:call-template></dd></div>
				<div><dt>Regras entre campos</dt><dd><xsl:call-template name="arquivo"><xsl:with-param name="nome" select="@formula"/></xsl:call-template></dd></div>
				<div><dt>Seções</dt><dd><xsl:value-of select="count(descendant::SECAO)"/></dd></div>
				<div><dt>Campos</dt><dd><xsl:value-of select="count(descendant::CAMPO)"/></dd></div>
			</dl>
			<xsl:choose>
				<xsl:when test="SECAO"><xsl:call-template name="forma"><xsl:with-param name="ancora" select="$ancora"/></xsl:call-template></xsl:when>
				<xsl:otherwise><p>Este layout não tem seções.</p></xsl:otherwise>
			</xsl:choose>
			<xsl:apply-templates select="SECAO" mode="parte">
				<xsl:with-param name="pai" select="$ancora"/>
				<xsl:with-param name="layout" select="$ancora"/>
			</xsl:apply-templates>
		</article>
	</xsl:template>

	<xsl:template name="elemento">
		<xsl:param name="tag"/>
		<code><xsl:value-of select="concat('&lt;', normalize-space($tag), '&gt;')"/></code>
	</xsl:template>

	<xsl:template name="arquivo">
		<xsl:param name="nome"/>
		<xsl:choose>
			<xsl:when test="normalize-space($nome) != ''"><b class="sim">Sim</b>, em <code><xsl:value-of select="normalize-space($nome)"/></code></xsl:when>
			<xsl:otherwise><span class="nao">Não</span></xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<!--
		A árvore de elementos do documento, que é também o índice do layout. Com uma seção mestre, o grupo do layout envolve
		cada linha dela com as outras seções; sem uma, cada seção do primeiro nível faz isso com o grupo dela.
	-->
	<xsl:template name="forma">
		<xsl:param name="ancora"/>
		<h3>Forma do documento</h3>
		<ul class="forma">
			<li>
				<xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tag"/></xsl:call-template>
				<ul>
					<xsl:choose>
						<xsl:when test="SECAO[normalize-space(translate(@secaoMestre, $minusculas, $maiusculas)) = 'SIM'] and normalize-space(@tagGrupo) != '' and normalize-space(@nomeGrupo) != ''">
							<li>
								<xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tagGrupo"/></xsl:call-template>
								<xsl:text> um para cada linha da seção mestre</xsl:text>
								<ul class="folhas"><xsl:apply-templates select="SECAO" mode="forma"><xsl:with-param name="pai" select="$ancora"/></xsl:apply-templates></ul>
							</li>
						</xsl:when>
						<xsl:otherwise><xsl:apply-templates select="SECAO" mode="forma"><xsl:with-param name="pai" select="$ancora"/></xsl:apply-templates></xsl:otherwise>
					</xsl:choose>
				</ul>
			</li>
		</ul>
	</xsl:template>

	<xsl:template match="SECAO" mode="forma">
		<xsl:param name="pai"/>
		<xsl:variable name="ancora" select="concat($pai, '/', normalize-space(@tag))"/>
		<li>
			<xsl:choose>
				<xsl:when test="SECAO and normalize-space(@tagGrupo) != '' and normalize-space(@nomeGrupo) != ''">
					<xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tagGrupo"/></xsl:call-template>
				</xsl:when>
				<xsl:otherwise><xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tag"/></xsl:call-template></xsl:otherwise>
			</xsl:choose>
			<xsl:text> </xsl:text>
			<a href="#{$ancora}"><xsl:value-of select="normalize-space(@nome)"/></a>
			<xsl:if test="normalize-space(translate(@secaoMestre, $minusculas, $maiusculas)) = 'SIM'"><xsl:text> </xsl:text><span class="marca mestre">mestre</span></xsl:if>
			<xsl:if test="SECAO">
				<ul class="folhas"><xsl:apply-templates select="SECAO" mode="forma"><xsl:with-param name="pai" select="$ancora"/></xsl:apply-templates></ul>
			</xsl:if>
		</li>
	</xsl:template>

	<!-- Uma seção, com as que estão dentro dela. -->

	<xsl:template match="SECAO" mode="parte">
		<xsl:param name="pai"/>
		<xsl:param name="layout"/>
		<xsl:param name="caminho"/>
		<xsl:param name="nivel" select="3"/>
		<xsl:variable name="ancora" select="concat($pai, '/', normalize-space(@tag))"/>
		<xsl:variable name="nome" select="normalize-space(@nome)"/>
		<section class="secao" id="{$ancora}">
			<xsl:element name="h{$nivel - ($nivel - 6) * ($nivel &gt; 6)}">
				<xsl:if test="$caminho != ''"><span class="caminho"><xsl:value-of select="$caminho"/></span></xsl:if>
				<xsl:value-of select="$nome"/>
			</xsl:element>
			<p class="voltar"><a href="#{$layout}">Voltar ao layout</a><xsl:text> </xsl:text><a href="#indice">Voltar ao índice</a></p>
			<ul class="dados">
				<xsl:if test="normalize-space(translate(@secaoMestre, $minusculas, $maiusculas)) = 'SIM'"><li><span class="marca mestre">seção mestre</span></li></xsl:if>
				<li>Elemento <xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tag"/></xsl:call-template></li>
				<li><xsl:call-template name="ocorrencia"/></li>
				<xsl:if test="normalize-space(@tagGrupo) != '' and normalize-space(@nomeGrupo) != ''">
					<li>Grupo <b><xsl:value-of select="normalize-space(@nomeGrupo)"/></b>, elemento <xsl:call-template name="elemento"><xsl:with-param name="tag" select="@tagGrupo"/></xsl:call-template></li>
				</xsl:if>
			</ul>
			<xsl:choose>
				<xsl:when test="CAMPO"><xsl:call-template name="campos"><xsl:with-param name="ancora" select="$ancora"/></xsl:call-template></xsl:when>
				<xsl:when test="SECAO"><p class="nota">Não tem campos próprios: reúne as seções a seguir (<xsl:value-of select="count(SECAO)"/>).</p></xsl:when>
				<xsl:otherwise><p class="nota">Esta seção não tem campos.</p></xsl:otherwise>
			</xsl:choose>
			<xsl:apply-templates select="SECAO" mode="parte">
				<xsl:with-param name="pai" select="$ancora"/>
				<xsl:with-param name="layout" select="$layout"/>
				<xsl:with-param name="caminho" select="concat($caminho, $nome, ' › ')"/>
				<xsl:with-param name="nivel" select="$nivel + 1"/>
			</xsl:apply-templates>
		</section>
	</xsl:template>

	<xsl:template name="ocorrencia">
		<xsl:variable name="texto" select="normalize-space(@ocorrencia)"/>
		<xsl:text>Ocorrência </xsl:text><b><xsl:value-of select="$texto"/></b>
		<xsl:choose>
			<xsl:when test="$texto = '*' and not(CAMPO)">: quantas vezes for preciso</xsl:when>
			<xsl:when test="$texto = '*'">: quantas linhas forem precisas</xsl:when>
			<xsl:when test="$texto = '1'">: uma linha</xsl:when>
			<xsl:when test="number($texto) &gt; 1">: até <xsl:value-of select="$texto"/> linhas</xsl:when>
		</xsl:choose>
		<xsl:if test="$texto != '*' and not(SECAO)"> por fundo ou carteira</xsl:if>
	</xsl:template>

	<!-- A altura que o navegador reserva enquanto a tabela não chega à tela vem do número de campos. -->
	<xsl:template name="campos">
		<xsl:param name="ancora"/>
		<div class="campos" style="contain-intrinsic-size: auto {count(CAMPO) * 56 + 80}px">
			<table>
				<caption>Campos de <xsl:value-of select="normalize-space(@nome)"/> (<xsl:value-of select="count(CAMPO)"/>)</caption>
				<thead><tr><th scope="col">Campo</th><th scope="col">Observação</th><th scope="col">Tipo</th><th scope="col" class="n">Tamanho</th><th scope="col">Obrigatório</th><th scope="col">Regra</th><th scope="col">Padrão</th><th scope="col">No arquivo</th></tr></thead>
				<tbody><xsl:apply-templates select="CAMPO"><xsl:with-param name="secao" select="$ancora"/></xsl:apply-templates></tbody>
			</table>
		</div>
	</xsl:template>

	<!-- Um campo. As células vazias ficam sem nada dentro: na forma estreita elas somem. -->

	<xsl:template match="CAMPO">
		<xsl:param name="secao"/>
		<xsl:variable name="ancora" select="concat($secao, '@', normalize-space(@tag))"/>
		<tr id="{$ancora}">
			<th scope="row">
				<a href="#{$ancora}"><xsl:value-of select="COLUNA/@titulo"/></a>
				<code><xsl:value-of select="normalize-space(@tag)"/></code>
				<xsl:if test="normalize-space(translate(@campoChave, $minusculas, $maiusculas)) = 'SIM'"><span class="marca chave">campo-chave</span></xsl:if>
			</th>
			<td><xsl:value-of select="normalize-space(OBSERVACAO)"/></td>
			<td><xsl:call-template name="tipo"/></td>
			<td class="n"><xsl:value-of select="DADO/@tamanho"/></td>
			<td><xsl:call-template name="simNao"><xsl:with-param name="sim" select="normalize-space(translate(DADO/@mandatorio, 's', 'S')) = 'S'"/></xsl:call-template></td>
			<td><xsl:call-template name="regra"/></td>
			<td><xsl:if test="DADO/@default != ''"><code><xsl:value-of select="DADO/@default"/></code></xsl:if></td>
			<td><xsl:call-template name="saida"/></td>
		</tr>
	</xsl:template>

	<xsl:template name="tipo">
		<xsl:variable name="tipo" select="translate(DADO/@tipo, $minusculas, $maiusculas)"/>
		<xsl:choose>
			<xsl:when test="$tipo = 'DATA'">Data</xsl:when>
			<xsl:when test="$tipo = 'INTEIRO'">Número inteiro</xsl:when>
			<xsl:when test="$tipo = 'DECIMAL'">Número decimal</xsl:when>
			<xsl:when test="$tipo = 'BOOLEAN'">Sim ou não</xsl:when>
			<xsl:otherwise>Texto</xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<!-- Um campo com tabela é sempre conferido por ela, seja qual for a regra que traz. -->
	<xsl:template name="regra">
		<xsl:variable name="regra" select="translate(DADO/@validacao, $minusculas, $maiusculas)"/>
		<xsl:choose>
			<xsl:when test="COLUNA/@tabela != ''">
				<xsl:variable name="tabela" select="key('tabela', translate(COLUNA/@tabela, $minusculas, $maiusculas))"/>
				<xsl:text>Tabela </xsl:text>
				<a href="#tabela/{$tabela/@id}"><xsl:value-of select="$tabela/@id"/></a>
				<xsl:choose>
					<xsl:when test="count($tabela/ENTRADA) &gt; $maximoCodigos"> (<xsl:value-of select="count($tabela/ENTRADA)"/> códigos)</xsl:when>
					<xsl:otherwise>
						<ul class="codigos">
							<xsl:for-each select="$tabela/ENTRADA"><li><code><xsl:value-of select="@valor"/></code><xsl:text> </xsl:text><xsl:value-of select="@descricao"/></li></xsl:for-each>
						</ul>
					</xsl:otherwise>
				</xsl:choose>
			</xsl:when>
			<xsl:when test="$regra = 'DATA'">Data</xsl:when>
			<xsl:when test="$regra = 'CNPJ'">CNPJ</xsl:when>
		</xsl:choose>
	</xsl:template>

	<!-- A forma gravada: o exemplo tem a parte inteira que cabe no tamanho e as casas que a máscara pede. -->
	<xsl:template name="saida">
		<xsl:variable name="mascara" select="COLUNA/@maskOutput"/>
		<xsl:variable name="casas" select="string-length(substring-after($mascara, '.'))"/>
		<xsl:choose>
			<xsl:when test="translate($mascara, $minusculas, $maiusculas) = 'YYYYMMDD'"><code>20240628</code><xsl:text> </xsl:text><span class="casas">(AAAAMMDD)</span></xsl:when>
			<xsl:when test="$mascara != '' and translate($mascara, '#0.', '') = ''">
				<code>
					<xsl:value-of select="substring('1234', 1, DADO/@tamanho - $casas)"/>
					<xsl:if test="$casas &gt; 0"><xsl:value-of select="concat('.', substring('567890123456789', 1, $casas))"/></xsl:if>
				</code>
				<xsl:choose>
					<xsl:when test="$casas = 0"><xsl:text> </xsl:text><span class="casas">(inteiro)</span></xsl:when>
					<xsl:otherwise><xsl:text> </xsl:text><span class="casas">(<xsl:value-of select="$casas"/> casas)</span></xsl:otherwise>
				</xsl:choose>
			</xsl:when>
			<xsl:when test="$mascara != ''"><code><xsl:value-of select="$mascara"/></code></xsl:when>
			<xsl:when test="translate(DADO/@tipo, $minusculas, $maiusculas) = 'BOOLEAN'"><code>S</code> ou <code>N</code></xsl:when>
			<xsl:when test="COLUNA/@tabela != ''">O código</xsl:when>
			<xsl:when test="translate(DADO/@validacao, $minusculas, $maiusculas) = 'CNPJ'">14 algarismos</xsl:when>
			<xsl:otherwise>Como digitado</xsl:otherwise>
		</xsl:choose>
	</xsl:template>

	<!-- Apêndice: todas as tabelas. -->

	<xsl:template name="apendice">
		<section class="layout" id="tabelas">
			<h2>Tabelas de valores</h2>
			<p class="voltar"><a href="#indice">Voltar ao índice</a></p>
			<p>No arquivo vai o código; a grade mostra a descrição.</p>
			<xsl:if test="not($tabelas)"><p>O catálogo não tem tabelas.</p></xsl:if>
			<div class="tabelas"><xsl:apply-templates select="$tabelas" mode="parte"/></div>
		</section>
	</xsl:template>

	<xsl:template match="TABELA" mode="parte">
		<section class="tabela" id="tabela/{@id}">
			<h3><xsl:value-of select="@id"/></h3>
			<xsl:for-each select="key('descricao', generate-id())[last()]"><p><xsl:value-of select="normalize-space()"/></p></xsl:for-each>
			<xsl:call-template name="usos"/>
			<table class="lista">
				<caption>Códigos de <xsl:value-of select="@id"/> (<xsl:value-of select="count(ENTRADA)"/>)</caption>
				<thead><tr><th scope="col">Código</th><th scope="col">Descrição</th></tr></thead>
				<tbody>
					<xsl:for-each select="ENTRADA"><tr><th scope="row"><code><xsl:value-of select="@valor"/></code></th><td><xsl:value-of select="@descricao"/></td></tr></xsl:for-each>
				</tbody>
			</table>
		</section>
	</xsl:template>

	<xsl:template name="usos">
		<xsl:variable name="id" select="translate(@id, $minusculas, $maiusculas)"/>
		<ul class="usos">
			<xsl:for-each select="$layouts">
				<xsl:variable name="campos" select="key('usoDaTabela', concat($id, ' ', generate-id()))"/>
				<xsl:if test="$campos">
					<li>
						<xsl:text>Usada em </xsl:text>
						<a href="#layout/{normalize-space(@tag)}"><xsl:value-of select="concat(normalize-space(@nome), ' ', normalize-space(@versao))"/></a>
						<xsl:value-of select="concat(': ', count($campos), ' campo', substring('s', 1, count($campos) &gt; 1))"/>
					</li>
				</xsl:if>
			</xsl:for-each>
		</ul>
	</xsl:template>

	<xsl:template name="estilo">
		<style>
			:root { color-scheme: light; --texto: #1c2430; --fraco: #56606e; --linha: #d3d9e0; --fundo: #f4f6f8; --cor: #0b5876; --forte: #073b50; }
			* { box-sizing: border-box; }
			html { scroll-padding-top: 1rem; }
			body { margin: 0; color: var(--texto); background: #fff; font: .9375rem/1.55 system-ui, "Noto Sans", "Open Sans", "Liberation Sans", Arial, sans-serif; }
			main { max-width: 88rem; padding: 1.5rem 1.75rem 4rem; }
			a { color: var(--cor); text-decoration-thickness: 1px; text-underline-offset: 2px; }
			a:hover { color: var(--forte); text-decoration-thickness: 2px; }
			:focus-visible { outline: 3px solid #e0a100; outline-offset: 2px; }
			h1, h2, h3, h4, h5, h6 { color: var(--forte); line-height: 1.25; margin: 0; overflow-wrap: anywhere; }
			h1 { font-size: 2rem; } h2 { font-size: 1.6rem; margin-bottom: .6rem; } h3 { font-size: 1.2rem; margin: 1.4rem 0 .4rem; } h4, h5, h6 { font-size: 1.1rem; }
			p { margin: .5rem 0; max-width: 75ch; }
			code, kbd { font: .92em/1.3 "Noto Sans Mono", "DejaVu Sans Mono", "Liberation Mono", monospace; overflow-wrap: anywhere; }
			code { color: #37306b; } kbd { padding: 0 .3em; border: 1px solid #aab3bd; border-bottom-width: 2px; border-radius: 3px; background: var(--fundo); }
			.salto { position: absolute; left: -99rem; } .salto:focus { left: 1rem; top: 1rem; z-index: 2; padding: .5rem 1rem; background: #fff; }
			.versao { color: var(--fraco); font-weight: normal; font-size: .85em; white-space: nowrap; }
			.marca { display: inline-block; padding: 0 .5em; border-radius: 1em; font-size: .8rem; font-weight: 600; white-space: nowrap; }
			.mestre { color: #5c3d00; background: #ffe8b8; } .chave { color: #14501f; background: #d3efd8; }
			.sim { color: #14591f; } .nao { color: var(--fraco); }

			.lado { padding: 1rem 1.25rem; border-bottom: 1px solid var(--linha); background: var(--fundo); font-size: .9rem; line-height: 1.4; }
			.lado p { margin: 0; } .lado .nome { font-weight: 700; font-size: 1.05rem; margin-bottom: .5rem; }
			.lado .grupo { margin: 1rem 0 .25rem; color: var(--fraco); font-size: .75rem; font-weight: 700; letter-spacing: .06em; text-transform: uppercase; }
			.lado ul { margin: 0; padding: 0; list-style: none; } .lado li ul, .lado details ul { padding-left: .9rem; border-left: 1px solid var(--linha); }
			.lado a { display: block; padding: .15rem 0; text-decoration: none; color: inherit; overflow-wrap: anywhere; } .lado a:hover { color: var(--cor); text-decoration: underline; }
			.lado summary { margin-left: 1rem; padding: .2rem 0; list-style-position: outside; cursor: pointer; } .lado details[open] summary { font-weight: 600; }

			.capa { padding: 1.5rem 1.75rem; margin-bottom: 2rem; border-radius: 8px; color: #fff; background: var(--forte); }
			.capa h1, .capa a { color: #fff; } .lema { font-size: 1.1rem; max-width: 60ch; }
			.ficha { display: flex; flex-wrap: wrap; gap: .6rem 2rem; margin: 1rem 0 0; } .ficha dt { font-size: .8rem; opacity: .8; } .ficha dd { margin: 0; overflow-wrap: anywhere; }
			main &gt; section { margin-bottom: 2.5rem; }
			.duas { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(24rem, 100%), 1fr)); gap: 1.25rem; margin: 1rem 0; }
			.duas &gt; section { padding: 0 1.25rem .5rem; border: 1px solid var(--linha); border-top: 4px solid var(--cor); border-radius: 6px; }
			ol, ul { padding-left: 1.4rem; } ol li { margin: .35rem 0; }
			.legenda { display: grid; gap: .5rem; margin: 1rem 0; } .legenda div { display: grid; grid-template-columns: 8rem 1fr; } .legenda dt { font-weight: 700; } .legenda dd { margin: 0; max-width: 80ch; }

			table { border-collapse: collapse; width: 100%; }
			caption { padding: .3rem 0; text-align: left; color: var(--fraco); font-size: .85rem; }
			th, td { padding: .4rem; border-bottom: 1px solid var(--linha); text-align: left; vertical-align: top; overflow-wrap: break-word; }
			thead th { background: #e6ecf1; color: var(--forte); font-size: .8rem; vertical-align: bottom; }
			.n { text-align: right; font-variant-numeric: tabular-nums; }
			.lista tbody th { font-weight: 600; }
			.layout { padding-top: 1.5rem; margin-top: 3rem; border-top: 4px solid var(--forte); }
			.voltar { margin: .3rem 0 .5rem; font-size: .85rem; } .voltar a { margin-right: 1rem; }
			.forma, .forma ul { list-style: none; margin: 0; padding-left: 0; } .forma ul { padding-left: 1.2rem; border-left: 1px solid var(--linha); }
			.forma li { padding: .12rem 0; } .forma .folhas { columns: 3 18rem; } .forma .folhas &gt; li { break-inside: avoid; }
			.secao { margin-top: 2rem; } .secao h3, .secao h4, .secao h5, .secao h6 { margin: 0; }
			.secao &gt; h3 { padding-bottom: .2rem; border-bottom: 2px solid var(--linha); }
			.caminho { color: var(--fraco); font-weight: normal; }
			.dados { display: flex; flex-wrap: wrap; gap: .2rem 1.5rem; margin: .25rem 0; padding: 0; list-style: none; font-size: .9rem; }
			.nota { color: var(--fraco); }
			.campos { content-visibility: auto; } .campos table { table-layout: fixed; font-size: .87rem; line-height: 1.45; }
			.campos thead th { position: sticky; top: 0; padding-right: .1rem; font-size: .75rem; } .campos thead .n { padding-right: .4rem; } .campos tbody tr { scroll-margin-top: 3rem; }
			.campos tbody th { font-weight: 600; } .campos tbody th a { color: inherit; text-decoration: none; } .campos tbody th a:hover { text-decoration: underline; } .campos tbody th code { display: block; font-weight: normal; }
			.campos tbody tr:nth-child(even) { background: #f8f9fb; } tr:target, .campos tbody tr:target { background: #fff3c4; outline: 2px solid #e0a100; outline-offset: -2px; }
			.casas { display: inline-block; color: var(--fraco); }
			.codigos, .usos { margin: 0; padding: 0; list-style: none; } .usos { font-size: .85rem; color: var(--fraco); }
			.tabelas { columns: 3 20rem; column-gap: 2rem; } .tabela { break-inside: avoid-column; padding-bottom: 1.5rem; } .tabela h3 { margin-top: 0; } .tabela p { margin: .1rem 0; } .tabela th, .tabela td { padding: .25rem .4rem; } .tabela th:first-child { width: 6rem; }
			.tabela:target &gt; h3, .secao:target &gt; h3, .secao:target &gt; h4 { background: #fff3c4; box-shadow: 0 0 0 4px #fff3c4; }

			@media print, (min-width: 60.01rem) {
				.campos th:nth-child(1) { width: 16%; } .campos th:nth-child(3) { width: 8.5%; } .campos th:nth-child(4) { width: 8.5%; } .campos th:nth-child(5) { width: 10%; }
				.campos th:nth-child(6) { width: 15%; } .campos th:nth-child(7) { width: 7%; } .campos th:nth-child(8) { width: 12%; }
			}
			@media screen and (min-width: 76rem) {
				body { display: grid; grid-template-columns: 15.5rem minmax(0, 1fr); }
				.lado { position: sticky; top: 0; height: 100vh; overflow-y: auto; border-bottom: 0; border-right: 1px solid var(--linha); }
			}
			@media screen and (max-width: 60rem) {
				main { padding: 1rem 1rem 3rem; }
				.legenda div { grid-template-columns: 1fr; }
				.campos table, .campos tbody, .campos tr, .campos th, .campos td, .campos caption { display: block; }
				.layouts, .layouts tbody, .layouts tr, .layouts th, .layouts td, .layouts caption { display: block; }
				.campos thead, .layouts thead { position: absolute; left: -99rem; }
				.campos tbody tr, .layouts tbody tr { margin: .75rem 0; border: 1px solid var(--linha); border-radius: 6px; }
				.campos tbody th, .layouts tbody th { width: auto; background: #e6ecf1; font-size: .95rem; }
				.campos td, .layouts td { border: 0; padding: .2rem .5rem .2rem 8rem; text-align: left; min-height: 1.8em; }
				.campos td:empty { display: none; } .campos td:nth-child(2) { padding: .4rem .5rem; }
				.campos td::before, .layouts td::before { float: left; width: 7rem; margin-left: -7.5rem; color: var(--fraco); font-weight: normal; }
				.campos td:nth-child(3)::before { content: "Tipo"; } .campos td:nth-child(4)::before { content: "Tamanho"; } .campos td:nth-child(5)::before { content: "Obrigatório"; }
				.campos td:nth-child(6)::before { content: "Regra"; } .campos td:nth-child(7)::before { content: "Padrão"; } .campos td:nth-child(8)::before { content: "No arquivo"; }
				.layouts td:nth-child(2)::before { content: "Versão"; } .layouts td:nth-child(3)::before { content: "Elemento raiz"; } .layouts td:nth-child(4)::before { content: "Tramador"; } .layouts td:nth-child(5)::before { content: "Validador"; }
				.layouts td:nth-child(6)::before { content: "Entre campos"; } .layouts td:nth-child(7)::before { content: "Seções"; } .layouts td:nth-child(8)::before { content: "Campos"; }
			}
			@media print {
				@page { size: A4 landscape; margin: 14mm 12mm; @bottom-right { content: counter(page) " de " counter(pages); font: 8pt sans-serif; } }
				html { font-size: 12px; } main { max-width: none; padding: 0; }
				.lado, .salto, .voltar { display: none; }
				a { color: inherit; }
				.capa { color: inherit; background: none; padding: 0; } .capa h1, .capa a { color: inherit; }
				.capa a[href^="http"]::after { content: " (" attr(href) ")"; }
				.layout { break-before: page; margin-top: 0; border-top: 0; padding-top: 0; }
				.campos { content-visibility: visible; } .campos thead th { position: static; }
				thead { display: table-header-group; } tr, #indice, .duas &gt; section, .legenda div { break-inside: avoid; }
				h2, h3, h4, h5, h6, .dados, caption { break-after: avoid; }
				thead th, .marca, .campos tbody tr:nth-child(even) { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
			}
		</style>
	</xsl:template>
</xsl:stylesheet>
