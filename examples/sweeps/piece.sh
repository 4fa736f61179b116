#!/bin/bash
# Designs one piece of a sweep: task 7 of an array takes piece.0007, of 10000 lines.
#
#   sbatch --array=1-100 piece.sh
#
# Submitted once more, it designs the pieces that have no results yet.
#SBATCH --job-name=sweep
#SBATCH --output=piece-%a.log
#SBATCH --cpus-per-task=1
set -euo pipefail

lines_of_a_piece=10000
piece=$(printf 'piece.%04d' "$SLURM_ARRAY_TASK_ID")
[[ ! -e $piece.results ]] || exit 0
veltane design --batch "$piece" -o "$piece.results" \
  --first-line $(((SLURM_ARRAY_TASK_ID - 1) * lines_of_a_piece + 1))
