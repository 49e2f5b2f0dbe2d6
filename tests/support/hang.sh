#!/bin/sh
# Stands for a program that never answers.
exec sleep 600
