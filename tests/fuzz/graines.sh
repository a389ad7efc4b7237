#!/bin/sh
# graines.sh DIR [fenlorctl]: makes small seed corpora DIR/dat, DIR/idx, DIR/json, DIR/profil, DIR/reprise.
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
