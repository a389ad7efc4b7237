#!/bin/sh
# The campaigns against the store at full length, one hour or two: tests/pannes/campagnes.sh [FOLDER OF THE PROGRAMS]
# [CAMPAIGN...]. Without a name all of them. What each found stands in FOLDER/campagne-NAME.txt; ends with 1 when one
# found something.
set -u
racine=$(cd "$(dirname "$0")/../.." && pwd)
programmes=${1:-$racine/build/rapide/bin}
[ $# -gt 0 ] && shift
fautives=0

# campagne NAME PROGRAM FILTER [VARIABLE=VALUE...]
campagne() {
  nom=$1 programme=$2 filtre=$3
  shift 3
  [ -z "$choisies" ] || case " $choisies " in *" $nom "*) ;; *) return ;; esac
  sortie=$programmes/campagne-$nom.txt
  if env "$@" nice -n 15 "$programmes/$programme" --gtest_filter="$filtre" > "$sortie" 2>&1; then
    echo "$nom: nothing found"
  else
    echo "$nom: see $sortie"
    fautives=1
  fi
  grep -E 'killed|kills|cuts|failing|failed|refused|deaths|bits|templates' "$sortie"
}

choisies=$*
campagne saisir tests_pannes 'Morts.CeQui*' FENLOR_MORTS=300
campagne biens tests_pannes 'Morts.UneImmobilisation*' FENLOR_MORTS=100
campagne rapprochement tests_pannes 'MortsRapprochement.*' FENLOR_MORTS=100
campagne verbes tests_pannes 'Verbes.Tues*' FENLOR_MORTS=500
campagne fenetre tests_pannes_fenetre 'MortsFenetre.*' FENLOR_MORTS_FENETRE=100
campagne gardefenetre tests_pannes_fenetre 'MortsGardeFenetre.*' FENLOR_MORTS_FENETRE=100
campagne echeances tests_pannes_fenetre 'MortsEcheances.*' FENLOR_MORTS_ECHEANCES=200
campagne coupures tests_pannes 'Coupure.*' FENLOR_GRAINES=12
campagne appels tests_pannes 'Verbes.Chaque*' FENLOR_APPELS=0
campagne disque tests_pannes 'Disque/*'
campagne bascules tests_pannes 'UnDegat.*' FENLOR_BASCULES=3000
campagne garde tests_pannes 'MortsGarde.*' FENLOR_MORTS=200
campagne gardedisque tests_garde 'GardePannes.U*DisqueQuiManque*' FENLOR_PAS=1
campagne pendantlasaisie tests_garde 'GardePannes.SauvegarderEntre*' FENLOR_SAISIES=10000
campagne conversions tests_pannes 'MortsConversion.*' FENLOR_MORTS=100 FENLOR_LIGNES=300000
exit $fautives
