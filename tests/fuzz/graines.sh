#!/bin/sh
# graines.sh DIR [fenlorctl]: makes small seed corpora DIR/dat, DIR/idx, DIR/json, DIR/profil, DIR/reprise,
# and one of each format of statements.
set -eu
dir=$1
fenlorctl=${2:-build/release/bin/fenlorctl}
mkdir -p "$dir/dat" "$dir/idx" "$dir/json" "$dir/profil" "$dir/reprise"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

"$fenlorctl" --cabinet "$tmp/c" creer --exercice 2003 --euro --tva >/dev/null
for nom in COMPTES RUBRIQUE; do
  "$fenlorctl" --cabinet "$tmp/c" exporter $nom >"$tmp/tout"
  head -n 3 "$tmp/tout" >"$tmp/$nom"
done

# Data files: one byte that chooses the file, then its beginning.
octet() { printf "\\$(printf %03o "$1")"; }
for choix in 0 1 4 5; do
  nom=JOURNAL; [ $((choix & 1)) = 1 ] && nom=COMPTES
  { octet $choix; head -c 3000 "$tmp/c/2003/$nom.dat"; } >"$dir/dat/$nom$choix"
done
{ octet 6; head -c 2000 "$tmp/c/Immo.dat" 2>/dev/null || true; } >"$dir/dat/immo"

{ octet 1; head -c 64 "$tmp/c/2003/JOURNAL.idx"; } >"$dir/idx/debut"
{ octet 0; head -c 600 "$tmp/c/2003/JOURNAL.idx"; } >"$dir/idx/court"
{ octet 0; } >"$dir/idx/vide"

{ octet 0; head -c 200 "$tmp/c/fenlor.rep"; } >"$dir/reprise/entete"
{ octet 3; printf 'QVUN'; head -c 200 /dev/zero; } >"$dir/reprise/unite"

saisie() { octet "$1"; cat; }
saisie 0 >"$dir/json/recette" <<'FIN'
{"journal":"recettes","date":"15/03/2003","compte":"706","libelle":"Consultations","ttc":120.0,"tresorerie":"BQ","paiement":"cheque"}
{"journal":"depenses","date":"16/03/2003","compte":"606","libelle":"Fournitures","ttc":12.5,"professionnel":10,"tresoreries":[{"compte":"BQ","montant":10,"paiement":"cheque"},{"compte":"512","montant":2.5}]}
FIN
saisie 1 >"$dir/json/od" <<'FIN'
{"journal":"od","date":"17/03/2003","libelle":"Divers","lignes":[{"compte":"512","libelle":"a","debit":10.0},{"compte":"706","credit":10.0}]}
{"mouvement":1,"supprimer":true}
{"mouvement":2,"pointer":true}
FIN
saisie 2 >"$dir/json/tout" <<'FIN'
{"mouvement":1,"valider":true}
{"journal":"recettes","date":"15/03/2003","code":"C","libelle":"é","ttc":1e3,"tresorerie":"512","monnaie":"franc"}
FIN
saisie 4 <"$tmp/COMPTES" >"$dir/json/comptes"
saisie 5 <"$tmp/RUBRIQUE" >"$dir/json/rubriques"

printf '[Activite]\r\nExercices=2003\r\nMot de Passe="  x "\r\n;reste\r\n[2003]\r\nDebut=01/01/2003\r\nActivite|Exercice|2003' >"$dir/profil/simple"
printf '[A]\nb = \047c\047\nB=d\n[a]\nb=e\n[]\n=x\na|b| \"q\"' >"$dir/profil/bords"

# Statements, one of each format and its bounds.
for nom in ofx ofxseul camt qif cfonb csv manifeste; do mkdir -p "$dir/$nom"; done
cat >"$dir/ofx/sgml" <<'FIN'
OFXHEADER:100
DATA:OFXSGML
CHARSET:1252

<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>1<ACCTID>2</BANKACCTFROM><BANKTRANLIST>
<STMTTRN><TRNTYPE>DEBIT<DTPOSTED>20030310120000[-5:EST]<TRNAMT>-1 234,50<FITID>A&amp;1<NAME>Loyer <MEMO><![CDATA[a<b]]></STMTTRN>
</BANKTRANLIST><LEDGERBAL><BALAMT>1.5<DTASOF>20030331</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>
FIN
cp "$dir/ofx/sgml" "$dir/ofxseul/sgml"
printf '{"forme":1,"cabinet":"c","date":"22/11/2026","heure":"10:53","complet":false,"exercices":[{"nom":"2003","debut":"01/01/2003","fin":"31/12/2003","cloture":"","ecritures":3}],"pieces":[{"nom":"fenlor.ini","taille":3,"sha256":"%064d"},{"nom":"2003/JOURNAL.dat","taille":1024,"sha256":"%064d"}]}' 1 2 >"$dir/manifeste/petit"
cat >"$dir/camt/petit" <<'FIN'
<?xml version="1.0" encoding="ISO-8859-1"?><Document><BkToCstmrStmt><Stmt><Acct><Id><IBAN>FR76</IBAN></Id><Ccy>EUR</Ccy></Acct>
<Bal><Tp><CdOrPrtry><Cd>CLBD</Cd></CdOrPrtry></Tp><Amt Ccy="EUR">1.00</Amt><CdtDbtInd>CRDT</CdtDbtInd><Dt><Dt>2003-03-31</Dt></Dt></Bal>
<Ntry><Amt Ccy="EUR">12.50</Amt><CdtDbtInd>DBIT</CdtDbtInd><Sts><Cd>BOOK</Cd></Sts><BookgDt><Dt>2003-03-10</Dt></BookgDt><ValDt><DtTm>2003-03-11T00:00:00</DtTm></ValDt>
<AcctSvcrRef>R1</AcctSvcrRef><NtryDtls><TxDtls><RltdPties><Cdtr><Nm>a</Nm></Cdtr></RltdPties><RmtInf><Ustrd>b</Ustrd></RmtInf></TxDtls></NtryDtls></Ntry></Stmt></BkToCstmrStmt></Document>
FIN
printf '!Account\nN12\n^\n!Type:Bank\nD10/03'"'"'03\nT-1,234.50\nPa\nMb\nN7\n^\nD2003-03-10\nT5\n^' >"$dir/qif/petit"
solde() { printf '%s10000    20000EUR2 00012345678  310303%50s0000000012345%s%16s\r\n' "$1" '' "$2" ''; }
{ solde 01 A
  printf '0410000    20000EUR2 00012345678  100303  110303%-31s  0000007  0000000001250}REFERENCE       \r\n' LIBELLE
  printf '0510000    20000EUR2 00012345678  100303     LIB%-70s  \r\n' SUITE
  solde 07 K; } >"$dir/cfonb/petit"
printf '01Compte n : 12\nSolde au 31/03/2003;1 234,56\nDate;Valeur;Libell\351;D\351bit;Cr\351dit;R\351f\351rence\n10/03/2003;;"a ""b""\nc";-1,00;;7\n' >"$dir/csv/deux"
printf '01Date,Description,Amount,Currency,Sens\n2003-03-10,a,1.50,EUR,D\n' >"$dir/csv/un"
printf '\377\376D\000a\000t\000e\000\t\000M\000o\000n\000t\000a\000n\000t\000\n\0001\000/\0003\000/\0000\0003\000\t\0001\000' >"$dir/csv/utf16"
