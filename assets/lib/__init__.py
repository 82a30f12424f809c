"""What every picture script uses: noise, light and brush, masks, and the writing of TGA files."""
